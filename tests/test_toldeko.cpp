// The dialog toolkit: validators, binding to templates, the message map, the
// modal loop with input, nesting and other threads, and the text renderer.
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

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// ---------------------------------------------------------------------------
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
}

TEST(GCharSetTest, RangesAndSingleCharacters)
{
    const GCharSet s("a-cx-");
    std::string dentro;
    for (int c = 1; c < 256; ++c)
        if (s.Has(static_cast<char>(c))) dentro += static_cast<char>(c);
    EXPECT_EQ(dentro, "-abcx");
}

// ---------------------------------------------------------------------------
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

// A dialog on the selection template with a message map of its own.
class TDialogoScelta : public GDlg {
public:
    TDialogoScelta() : GDlg(nullptr, 10043)
    {
        for (int id : {2122, 2123, 2124, 2125, 2127, 2128, 2129}) radio.push_back(new GCheckButton(this, id));
        combo = new GComboBox(this, 2120);
    }
    void setupWindow() override
    {
        GDlg::setupWindow();
        combo->setItemData(combo->addString("primo"), 10);
        combo->setItemData(combo->addString("secondo"), 20);
        radio[5]->setCheck(1);  // 9600
        radio[3]->enableWindow(false);  // Com4
    }
    const GFC_MSGMAP* GetMessageMap() const override { return &mappa; }

    void OnPorta() { porte.push_back(radio[0]->getCheck() + 2 * radio[1]->getCheck() + 3 * radio[2]->getCheck()); }
    void OnTipo() { tipi.push_back(static_cast<int>(combo->getItemData(combo->getSelIndex()))); }
    std::vector<GCheckButton*> radio;
    GComboBox* combo;
    std::vector<int> porte, tipi;

private:
    static const GFC_MSGMAP_ENTRY righe[];
    static const GFC_MSGMAP mappa;
    static const GFC_MSGMAP* Base() { return &GDlg::messageMap; }
};

const GFC_MSGMAP_ENTRY TDialogoScelta::righe[] = {
    {WM_COMMAND, CBN_SELCHANGE, 2120, 2120, GfcSig_vv, GFC_HANDLER(&TDialogoScelta::OnTipo)},
    {WM_COMMAND, BN_CLICKED, 2122, 2125, GfcSig_vv, GFC_HANDLER(&TDialogoScelta::OnPorta)},
    {0, 0, 0, 0, 0, nullptr},
};
const GFC_MSGMAP TDialogoScelta::mappa = {&TDialogoScelta::Base, TDialogoScelta::righe};

TEST_F(ToolkitTest, RadiosListsAndTheMessageMap)
{
    script.Clic(2123);
    script.Clic(2124);
    script.Clic(2125);  // disabled: nothing happens
    script.Scegli(2120, 1);
    script.Scegli(2120, 5);  // no such entry: nothing happens
    script.Invio();          // the default button, OK, through GDlg's map
    TDialogoScelta d;
    EXPECT_EQ(d.doModal(), IDOK);
    EXPECT_THAT(d.porte, ElementsAre(2, 3));
    EXPECT_THAT(d.tipi, ElementsAre(20));
    const TStatoDialogo s = UltimoChiuso();
    EXPECT_EQ(s.Check(2123), 0);
    EXPECT_EQ(s.Check(2124), 1);
    EXPECT_EQ(s.Check(2125), 0);
    EXPECT_EQ(s.Check(2128), 1) << "another group keeps its radio";
    EXPECT_FALSE(s.Abilitato(2125));
    EXPECT_EQ(d.combo->getCount(), 2);
    EXPECT_EQ(d.combo->getSelIndex(), 1);
    EXPECT_EQ(d.combo->setSelIndex(2), -1);
    EXPECT_EQ(d.combo->getSelIndex(), -1);
    EXPECT_EQ(d.combo->getItemData(-1), -1);
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

// Platform calls on a control that has no object, and on a handle of no dialog.
TEST_F(ToolkitTest, PlatformCallsOnControlsWithoutObjects)
{
    GDlg d(nullptr, 10044);
    const HWND h = GetDlgItem(d, 2185);
    ASSERT_NE(h, nullptr);
    EXPECT_EQ(GetDlgItem(d, 4242), nullptr);
    EXPECT_EQ(EnableWindow(h, 0), 0) << "it was enabled";
    EXPECT_EQ(EnableWindow(h, 1), 1) << "it was disabled";
    EXPECT_EQ(EnableWindow(h, 0), 0);
    int estraneo = 0;
    EXPECT_EQ(EnableWindow(&estraneo, 0), 0);
    EXPECT_EQ(GetDlgItem(&estraneo, 2185), nullptr);
    // A box goes through the platform's handler, owned by the dialog, and
    // its answer comes back.
    utente.Rispondi(IDNO);
    EXPECT_EQ(d.messageBox("Continuo ?", "Scelta Tavoletta", MB_YESNO | MB_ICONQUESTION), IDNO);
    ASSERT_EQ(utente.Messaggi().size(), 1u);
    EXPECT_EQ(utente.Messaggi()[0].owner, d.handle());
    script.Esc();
    d.doModal();
    EXPECT_FALSE(UltimoChiuso().Abilitato(2185));
    EXPECT_TRUE(UltimoChiuso().Abilitato(2186));
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

    TDialogoScelta scelta;
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
