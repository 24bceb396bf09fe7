// The button functions, limits and live test dialogs: the script clicks, a
// second thread plays the reader and calls the dialog's notifications.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "dialogs/dialogo_funzioni_bottoni.h"
#include "dialogs/dialogo_limiti.h"
#include "dialogs/dialogo_prova.h"
#include "support/prova_dialoghi.h"

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

class DialoghiTavolettaTest : public TProvaDialoghi {
protected:
    TDataDigit dati = CDigit().GetDataDigit();
};

// Lists up to the count offer the seven functions and show the stored one;
// the rest are greyed and empty. Escape writes nothing, OK only the choices.
TEST_F(DialoghiTavolettaTest, ListsUpToTheCountTheRestGreyed)
{
    const std::vector<std::string> etichette = {" -", "Conferma", "Annulla - Fine funzione",
                                                "Inizia Linea - Dis. Lib.", "Inizia Linea - Fine Ent.",
                                                "Inizia Polilinea - Dis. Lib.", "Inizia Polilinea - Fine Ent."};
    const std::vector<std::intptr_t> codici = {0, 1, 8, 2, 4, 5, 6};
    const std::uint8_t stored[16] = {1, 7, 4, 8, 0, 5, 6, 1, 8, 2, 4, 0, 0, 5, 6, 3};
    std::memcpy(dati.funzBott, stored, sizeof stored);
    for (int n : {4, 16}) {
        dati.numBottoni = static_cast<std::int16_t>(n);
        script.Esc();
        GDigitFunzBottDlg d(nullptr, &dati);
        EXPECT_EQ(d.doModal(), IDCANCEL);
        const TStatoDialogo s = UltimoChiuso();
        EXPECT_EQ(s.titolo, "Definizione funzioni bottone");
        for (int i = 0; i < 16; ++i) {
            SCOPED_TRACE("count " + std::to_string(n) + ", button " + std::to_string(i + 1));
            EXPECT_EQ(s.Abilitato(2180 + i), i < n);
            EXPECT_EQ(s.Abilitato(2196 + i), i < n);
            const TStatoElemento* lista = s.Elemento(2196 + i);
            ASSERT_NE(lista, nullptr);
            std::vector<std::string> testi;
            std::vector<std::intptr_t> valori;
            for (const TVoceLista& v : lista->voci) testi.push_back(v.testo), valori.push_back(v.dato);
            EXPECT_THAT(testi, ElementsAreArray(i < n ? etichette : std::vector<std::string>{}));
            EXPECT_THAT(valori, ElementsAreArray(i < n ? codici : std::vector<std::intptr_t>{}));
            const auto k = std::find(codici.begin(), codici.end(), stored[i]);
            if (i < n) {
                EXPECT_EQ(lista->selezione, k == codici.end() ? -1 : k - codici.begin());
            }
        }
        EXPECT_EQ(std::memcmp(dati.funzBott, stored, sizeof stored), 0) << "cancel writes nothing";
    }
    dati.numBottoni = 4;
    script.Scegli(2196, 5);
    script.Scegli(2199, 0);
    script.Invio();
    GDigitFunzBottDlg d(nullptr, &dati);
    EXPECT_EQ(d.doModal(), IDOK);
    EXPECT_THAT(dati.funzBott, ElementsAre(5, 7, 4, 0, 0, 5, 6, 1, 8, 2, 4, 0, 0, 5, 6, 3));
}

// Model 1, four buttons: 1 confirms, 2 and 3 are the host's, 4 cancels, 9 is
// beyond the count. Presses after the one that ended the dialog change nothing.
enum class TPoi { nulla, invio, esc };

struct TCasoLimiti {
    const char* nome;
    std::vector<TPressione> pressioni;
    TPoi poi;
    const char* richiesta;  // the prompt after the presses
    int risultato;
    bool confermati;
    std::int32_t limiti[4];
};

std::ostream& operator<<(std::ostream& os, const TCasoLimiti& c) { return os << c.nome; }

class LimitiTest : public DialoghiTavolettaTest, public ::testing::WithParamInterface<TCasoLimiti> {
protected:
    LimitiTest() { digit.GetDataDigit().tipo = 1; }
    CDigit digit;
};

constexpr const char* primo = "il punto inferiore a sinistra";
constexpr const char* secondo = "il punto superiore a destra";

TEST_P(LimitiTest, CornersFromThePresses)
{
    const TCasoLimiti& c = GetParam();
    GDigitMinMaxDlg d(nullptr, &digit);
    std::string richiesta;
    const int risultato = Esegui(10045, [&] { return d.doModal(); }, [&](CDigitNtfy& ntfy) {
        Suona(ntfy, c.pressioni);
        richiesta = script.Corrente().Testo(2240);
        if (c.poi == TPoi::invio) script.Invio();
        if (c.poi == TPoi::esc) script.Esc();
    });
    EXPECT_EQ(risultato, c.risultato);
    EXPECT_EQ(UltimoChiuso().titolo, "Limiti tavoletta");
    if (c.poi != TPoi::nulla) {
        EXPECT_EQ(richiesta, c.richiesta);
    }
    std::int32_t l[4] = {-1, -1, -1, -1};
    for (int lettura = 0; lettura < 2; ++lettura) {  // a late press between the two readings changes nothing
        EXPECT_EQ(d.LimitiConfermati(l[0], l[1], l[2], l[3]), c.confermati);
        if (c.confermati) {
            EXPECT_THAT(l, ElementsAreArray(c.limiti));
        }
        d.NotifyButton(1, 77, 77);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Casi, LimitiTest,
    ::testing::Values(
        TCasoLimiti{"DueConferme", {{2, 5, 5}, {1, 10, 20}, {3, 7, 7}, {1, 300, 400}, {2, 7, 7}, {1, 8, 8}},
                    TPoi::nulla, "", IDOK, true, {10, 20, 300, 400}},
        TCasoLimiti{"OrdineQualsiasi", {{1, 500, 600}, {1, -10, 20}}, TPoi::nulla, "", IDOK, true, {500, 600, -10, 20}},
        TCasoLimiti{"AltriBottoniAspettano", {{2, 5, 5}, {9, 6, 6}}, TPoi::esc, primo, IDCANCEL, false, {}},
        TCasoLimiti{"SecondoAtteso", {{1, 5, 5}, {3, 6, 6}}, TPoi::esc, secondo, IDCANCEL, false, {}},
        TCasoLimiti{"AnnullaAlPrimo", {{4, 5, 5}, {1, 6, 6}, {1, 7, 7}}, TPoi::nulla, "", IDCANCEL, false, {}},
        TCasoLimiti{"AnnullaAlSecondo", {{1, 5, 5}, {4, 6, 6}, {1, 8, 8}}, TPoi::nulla, "", IDCANCEL, false, {}},
        TCasoLimiti{"InvioSenzaAngoli", {{1, 5, 5}}, TPoi::invio, secondo, IDOK, false, {}}),
    [](const ::testing::TestParamInfo<TCasoLimiti>& i) { return std::string(i.param.nome); });

// The live test dialog over the limits (1000, 2000) to (5000, 8000).
using TPunti = std::set<std::pair<int, int>>;

class ProvaTest : public DialoghiTavolettaTest {
protected:
    ProvaTest()
    {
        TDataDigit& d = digit.GetDataDigit();
        d.tipo = 1;
        d.limitiDefiniti = true;
        std::tie(d.xMin, d.yMin, d.xMax, d.yMax) = std::make_tuple(1000, 2000, 5000, 8000);
    }
    // The frame's canvas after each of the pointer's states, then Escape or Enter.
    std::vector<TStatoDialogo> Passi(const std::vector<TPressione>& stati, bool invio, int attesa)
    {
        GDigitProvaDlg d(nullptr, &digit);
        std::vector<TStatoDialogo> passi;
        EXPECT_EQ(Esegui(10046, [&] { return d.doModal(); }, [&](CDigitNtfy& ntfy) {
                      passi.push_back(script.Corrente());
                      for (const TPressione& p : stati) {
                          Suona(ntfy, {p});
                          passi.push_back(script.Corrente());
                      }
                      invio ? script.Invio() : script.Esc();
                  }), attesa);
        return passi;
    }
    static TPunti Inchiostro(const TStatoDialogo& s)
    {
        const TTela& t = s.Elemento(2280)->tela;
        TPunti p;
        for (int y = 0; y < t.altezza; ++y)
            for (int x = 0; x < t.larghezza; ++x)
                if (t.Pixel(x, y) != coloreSfondo && t.Pixel(x, y) != coloreBordo) p.insert({x, y});
        return p;
    }
    // Two arms of nine pixels on (cx, cy), clipped to the canvas; the centre,
    // on both arms, is flipped back by XOR.
    static TPunti Croce(const TTela& t, int cx, int cy)
    {
        TPunti p;
        for (int d = -4; d <= 4; ++d)
            for (auto q : {std::make_pair(cx + d, cy), std::make_pair(cx, cy + d)})
                if (d != 0 && t.Dentro(q.first, q.second)) p.insert(q);
        return p;
    }

    CDigit digit;
};

TEST_F(ProvaTest, CrossFollowsThePointerAndWipesTheLastOne)
{
    const auto passi =
        Passi({{0, 1000, 2000}, {0, 5000, 8000}, {3, 3000, 5000}, {0, -12, 999}, {0, 975, 5000}}, false, IDCANCEL);
    EXPECT_EQ(Leggi(digitLink.ntfy), nullptr) << "Fine stops the notification";
    ASSERT_EQ(passi.size(), 6u);
    // The client rectangle shrunk by one pixel: R and B fall on the border.
    const TTela t = passi[0].Elemento(2280)->tela;
    const int L = 1, T = 1, R = t.larghezza - 1, B = t.altezza - 1;
    EXPECT_TRUE(Inchiostro(passi[0]).empty());
    EXPECT_EQ(DisegnaDialogoTesto(passi[0]).find('#'), std::string::npos);
    EXPECT_EQ(Inchiostro(passi[1]), Croce(t, L, B)) << "lower-left limit on (L, B)";
    EXPECT_NE(DisegnaDialogoTesto(passi[3]).find('#'), std::string::npos) << "the renderer shows the cross";
    EXPECT_EQ(Inchiostro(passi[2]), Croce(t, R, T)) << "upper-right limit on (R, T), the first cross gone";

    const char* testi[][3] = {{"[005000]", "[008000]", "<=>"}, {"[003000]", "[005000]", "<3>"},
                              {"[-00012]", "[000999]", "<=>"}};
    for (int k = 0; k < 3; ++k)
        for (int c = 0; c < 3; ++c) EXPECT_EQ(passi[k + 2].Testo(2281 + c), testi[k][c]) << "step " << k + 2;
    EXPECT_TRUE(Inchiostro(passi[4]).empty()) << "x = -12 falls far left of the frame";
    // 25 counts left of the limit, under half a pixel, truncates to column 0;
    // y = 5000 is row 97.5 of 195.
    ASSERT_EQ(t.larghezza, 240);
    ASSERT_EQ(t.altezza, 195);
    EXPECT_EQ(Inchiostro(passi[5]), Croce(t, 0, 97));
}

// Limits without width or height keep the cross on the frame's edge (L, B);
// over limits one count wide an extreme count lands far off the frame and
// leaves no ink (no line from a position that overflowed). No OK button: the
// platform's id 1 ends it all the same.
TEST_F(ProvaTest, DegenerateLimitsAndExtremeCounts)
{
    std::tie(digit.GetDataDigit().xMax, digit.GetDataDigit().yMax) = std::make_tuple(1000, 2000);
    auto passi = Passi({{0, 4000, -7000}}, true, IDOK);
    ASSERT_EQ(passi.size(), 2u);
    const TTela t = passi[1].Elemento(2280)->tela;
    EXPECT_EQ(Inchiostro(passi[1]), Croce(t, 1, t.altezza - 1));

    std::tie(digit.GetDataDigit().xMax, digit.GetDataDigit().yMax) = std::make_tuple(1001, 2001);
    constexpr std::int32_t massimo = std::numeric_limits<std::int32_t>::max(), minimo = -massimo - 1;
    passi = Passi({{0, massimo, 2000}, {0, minimo, 2000}, {0, 1000, massimo}, {0, 1000, minimo}}, false, IDCANCEL);
    ASSERT_EQ(passi.size(), 5u);
    for (std::size_t k = 1; k < passi.size(); ++k) EXPECT_TRUE(Inchiostro(passi[k]).empty()) << "step " << k;
}

}  // namespace
