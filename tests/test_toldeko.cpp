// The dialog toolkit: validators, binding to templates, the modal loop with
// other threads and platform calls, and the text renderer. The library's
// dialogs drive its message maps, radios and lists.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "platform/toldeko/disegno_testo.h"
#include "platform/toldeko/toldeko.h"
#include "support/prova_dialoghi.h"

namespace {

using ::testing::HasSubstr;

TEST(ValidatoreTest, PartialTexts)
{
    struct TCaso {
        const char* testo;
        bool reale;  // for GDoubleValidator
        bool cifre;  // for GFilterValidator(GCharSet("0-9"))
    };
    const TCaso casi[] = {{"", true, true},      {"0123456789", true, true}, {"-", true, false},
                          {"+1.5", true, false}, {".5e3", true, false},      {"1e", true, false},
                          {"1E-", true, false},  {"-2.e+12", true, false},   {"1.5.", false, false},
                          {"e5", false, false},  {".e5", false, false},      {"1e5.0", false, false},
                          {"1e5e", false, false}, {"--1", false, false},     {"1 2", false, false},
                          {"12a", false, false}, {"1-", false, false}};
    for (const TCaso& c : casi) {
        EXPECT_EQ(GDoubleValidator().IsValidInput(c.testo), c.reale) << c.testo;
        EXPECT_EQ(GFilterValidator(GCharSet("0-9")).IsValidInput(c.testo), c.cifre) << c.testo;
    }
    EXPECT_TRUE(GFilterValidator(GCharSet("a-cx-")).IsValidInput("-abcx")) << "ranges and single characters";
    EXPECT_FALSE(GFilterValidator(GCharSet("a-cx-")).IsValidInput("d"));
}

using ToolkitTest = TProvaDialoghi;

// No such id; an edit is no static; a button is no list; a group box is no
// radio; no such template: each error names the dialog and the id or kind.
TEST_F(ToolkitTest, BindingErrorsNameTheDialogAndTheId)
{
    GDlg punto(nullptr, 10040), scelta(nullptr, 10043);
    const std::pair<std::function<void()>, std::vector<const char*>> casi[] = {
        {[&] { new GEdit(&punto, 2099, new GDoubleValidator()); }, {"10040", "controllo 2099"}},
        {[&] { new GStatic(&punto, 2000); }, {"10040", "adatto a GStatic"}},
        {[&] { new GComboBox(&punto, 1); }, {"10040", "adatto a GComboBox"}},
        {[&] { new GCheckButton(&scelta, 2121); }, {"10043", "adatto a GCheckButton"}},
        {[] { GDlg d(nullptr, 9999); }, {"9999"}}};
    for (const auto& [lega, parti] : casi) {
        std::string errore = "nothing thrown";
        try {
            lega();
        } catch (const std::logic_error& e) {
            errore = e.what();
        }
        for (const char* p : parti) EXPECT_THAT(errore, HasSubstr(p));
    }
}

TEST_F(ToolkitTest, AnotherThreadSetsTextsAndEndsTheDialog)
{
    GDlg d(nullptr, 10045);
    std::thread altro([&] {
        ASSERT_TRUE(script.AttendiDialogo(10045));
        d.setDlgItemText(2240, "il punto superiore a destra");
        d.EndDialog(5);
        d.EndDialog(6);  // the first end value stands
    });
    const int risultato = d.doModal();
    altro.join();
    EXPECT_EQ(risultato, 5);
    EXPECT_EQ(UltimoChiuso().Testo(2240), "il punto superiore a destra");
}

// Platform calls on a control that has no object, and a box that goes through
// the platform's handler, owned by the dialog, its answer coming back.
TEST_F(ToolkitTest, PlatformCallsOnControlsWithoutObjects)
{
    GDlg d(nullptr, 10044);
    const HWND h = GetDlgItem(d, 2185);
    ASSERT_NE(h, nullptr);
    EXPECT_EQ(GetDlgItem(d, 4242), nullptr);
    EXPECT_EQ(EnableWindow(h, 0), 0) << "it was enabled";
    utente.Rispondi(IDNO);
    EXPECT_EQ(d.messageBox("Continuo ?", "Scelta Tavoletta", MB_YESNO | MB_ICONQUESTION), IDNO);
    ASSERT_EQ(utente.Messaggi().size(), 1u);
    EXPECT_EQ(utente.Messaggi()[0].owner, d.handle());
    script.Esc();
    d.doModal();
    EXPECT_FALSE(UltimoChiuso().Abilitato(2185));
    EXPECT_TRUE(UltimoChiuso().Abilitato(2186));
}

// Typing reaches an enabled entry only: not a disabled one, nor a button.
TEST_F(ToolkitTest, TypingReachesOnlyAnEnabledEntry)
{
    struct TPunto : GDlg {
        TPunto() : GDlg(nullptr, 10040) {}
        void setupWindow() override
        {
            GDlg::setupWindow();
            EnableWindow(GetDlgItem(*this, 2001), 0);
        }
    } d;
    script.Digita(2000, "12");
    script.Digita(2001, "34");
    script.Digita(2, "5");
    script.Esc();
    EXPECT_EQ(d.doModal(), IDCANCEL);
    EXPECT_EQ(UltimoChiuso().Testo(2000), "12");
    EXPECT_EQ(UltimoChiuso().Testo(2001), "");
    EXPECT_EQ(UltimoChiuso().Testo(2), "&Annulla");
}

// Inputs at the edges change nothing: an entry beyond a list's last, and
// Enter while the default button is greyed; Escape still ends the dialog.
TEST_F(ToolkitTest, AChoiceBeyondTheListAndEnterOnAGreyedDefaultDoNothing)
{
    struct TConLista : GDlg {
        TConLista() : GDlg(nullptr, 10044), lista(new GComboBox(this, 2196)) {}
        void setupWindow() override
        {
            GDlg::setupWindow();
            for (const char* voce : {"a", "b", "c"}) lista->addString(voce);
            EnableWindow(GetDlgItem(*this, IDOK), 0);
        }
        GComboBox* lista;
    } d;
    script.Scegli(2196, 2);
    script.Scegli(2196, 3);  // three entries: 0 to 2
    script.Invio();
    script.Esc();
    EXPECT_EQ(d.doModal(), IDCANCEL);
    EXPECT_EQ(UltimoChiuso().Selezione(2196), 2);
}

TEST(BackendPredefinitoTest, CancelsEveryDialog)
{
    ImpostaBackendDialoghi(nullptr);
    GDlg d(nullptr, 10040);
    EXPECT_EQ(d.doModal(), IDCANCEL);
}

TEST_F(ToolkitTest, TextRendererDrawsControlsInPlace)
{
    struct TDialogoPunto : GDlg {
        TDialogoPunto() : GDlg(nullptr, 10040) { new GEdit(this, 2000, new GDoubleValidator()); }
    } punto;
    script.Digita(2000, "12.5");
    script.Esc();
    punto.doModal();
    const std::vector<std::string> righe = DisegnaDialogo(UltimoChiuso());
    ASSERT_EQ(righe.size(), 10u);  // 64 units: 8 rows inside the border
    EXPECT_EQ(righe[0].rfind("+= Calibrazione per punti sparsi =", 0), 0u) << righe[0];
    // Labels from column 3 (8 units), edits from column 19 (72 units) and 20
    // wide, buttons 12 wide from columns 7 and 23, the border at column 41.
    EXPECT_EQ(righe[2], "|  Coord. Est (Y)  [12.5              ]  |");
    EXPECT_EQ(righe[4], "|  Coord. Nord (X) [                  ]  |");
    EXPECT_EQ(righe[6], "|      <<   OK   >>    < Annulla  >      |");
    EXPECT_EQ(righe[9].front(), '+');

    GDlg scelta(nullptr, 10043);
    EnableWindow(GetDlgItem(scelta, 2125), 0);
    script.Clic(2124);
    script.Esc();
    scelta.doModal();
    const std::string testo = DisegnaDialogoTesto(UltimoChiuso());
    EXPECT_THAT(testo, HasSubstr("(*) Com3"));
    EXPECT_THAT(testo, HasSubstr("( ) Com2"));
    EXPECT_THAT(testo, HasSubstr("{ } Com4")) << "disabled";
    EXPECT_THAT(testo, HasSubstr("- Velocità -")) << "group box caption, UTF-8 kept whole";
    EXPECT_THAT(testo, HasSubstr("+- Risoluzio-+")) << "a caption longer than its box is cut inside the corners";
}

}  // namespace
