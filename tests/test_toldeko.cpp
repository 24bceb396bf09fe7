// The dialog toolkit: validators, the modal loop with other threads, input
// at the edges, and the text renderer. The library's dialogs drive its
// message maps, radios and lists.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
