// configDigit from the host's side: the model list, the radios, the three
// buttons and their nested dialogs, and what reaches the host's record.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"
#include "tablet/catalogo.h"
#include "support/prova_dialoghi.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int idOpzioni[] = {2122, 2123, 2124, 2125, 2127, 2128, 2129, 2131, 2132, 2133, 2135,
                             2136, 2138, 2139, 2141, 2142, 2144, 2145, 2146, 2148, 2149};

class SceltaTest : public TProvaDialoghi {
protected:
    std::vector<unsigned> Aperti() const
    {
        std::vector<unsigned> m;
        for (const TDialogoChiuso& c : script.Chiusi()) m.push_back(c.stato.modello);
        return m;
    }
    // A record of model 5 on COM2 with limits.
    static TDataDigit Modello5() { return {5, 2, 9600, 'E', 7, 2, 2, 3, 16, {1, 2, 4, 8}, true, 10, 20, 3000, 4000}; }

    CDigit digit;
};

struct TCasoRiga {
    int riga;
    std::set<int> accesi, spenti;  // radios checked, radios disabled
    int senzaEtichetta;            // 2146, or 2145 and 2146, show no caption
};
std::ostream& operator<<(std::ostream& os, const TCasoRiga& c) { return os << "row " << c.riga; }

class RigaTest : public SceltaTest, public ::testing::WithParamInterface<TCasoRiga> {};

// Row 4 first, which disables "Si", then the row of the case.
TEST_P(RigaTest, ModelListAppliesTheRow)
{
    const TCasoRiga& c = GetParam();
    TDataDigit dati = CDigit().GetDataDigit();
    script.Scegli(2120, 4);
    script.Scegli(2120, c.riga);
    script.Invio();
    ASSERT_EQ(configDigit(nullptr, &digit, dati), IDOK);

    const TTipoDigit& r = catalogoDigit[c.riga];
    EXPECT_EQ(dati.tipo, c.riga);
    EXPECT_EQ(dati.porta, 2) << "the port does not depend on the model";
    EXPECT_EQ(std::tie(dati.velocita, dati.parita, dati.bitDati, dati.bitStop, dati.reset, dati.risoluzione,
                       dati.numBottoni),
              std::tie(r.velocita, r.parita, r.bitDati, r.bitStop, r.reset, r.risoluzione, r.numBottoni));

    const TStatoDialogo s = UltimoChiuso();
    EXPECT_EQ(s.titolo, "Scelta tavoletta");
    EXPECT_EQ(s.Testo(2120), "");
    const TStatoElemento* lista = s.Elemento(2120);
    ASSERT_EQ(lista->voci.size(), 9u);
    EXPECT_EQ(lista->voci[static_cast<std::size_t>(lista->selezione)].testo, r.nome);
    EXPECT_EQ(s.Testo(2144), r.etichRisoluzione[0]);
    EXPECT_EQ(s.Testo(2145).empty(), c.senzaEtichetta == 2);
    EXPECT_EQ(s.Testo(2146).empty(), c.senzaEtichetta >= 1);
    for (int id : idOpzioni) {
        EXPECT_EQ(s.Check(id), c.accesi.count(id) ? 1 : 0) << id;
        EXPECT_EQ(s.Abilitato(id), c.spenti.count(id) == 0) << id;
    }
}

const std::set<int> tutti(std::begin(idOpzioni), std::end(idOpzioni));

INSTANTIATE_TEST_SUITE_P(
    Righe, RigaTest,
    ::testing::Values(TCasoRiga{0, {}, tutti, 1},
                      TCasoRiga{1, {2123, 2128, 2133, 2136, 2138, 2142, 2145, 2148}, {}, 0},
                      TCasoRiga{2, {2123, 2128, 2133, 2136, 2138, 2142, 2145, 2148}, {}, 0},
                      TCasoRiga{3, {2123, 2128, 2132, 2135, 2139, 2142, 2145, 2148}, {}, 0},
                      TCasoRiga{4, {2123, 2128, 2132, 2135, 2138, 2141, 2144, 2149}, {2142, 2145, 2146}, 2},
                      TCasoRiga{5, {2123, 2128, 2132, 2135, 2139, 2142, 2146, 2149}, {}, 0},
                      TCasoRiga{6, {2123, 2128, 2132, 2136, 2138, 2142, 2145, 2149}, {2146}, 1},
                      TCasoRiga{7, {2123, 2128, 2132, 2135, 2138, 2142, 2144, 2149}, {2145, 2146}, 2},
                      TCasoRiga{8, {2123, 2128, 2131, 2136, 2138, 2142, 2144, 2148}, {2145, 2146}, 2}));

// What reaches model 5's record after a few actions; each parity radio as its
// own letter (a pseudo-terminal ignores parity, so only the record tells).

struct TCasoAzioni {
    const char* nome;
    std::function<void(TBackendScript&)> azioni;
    int risultato;
    int tipo, velocita, porta;
    bool limitiDefiniti;
    char parita = 'E';
    int bitStop = 2, numBottoni = 16;
    int portaIniziale = 2;  // the record's before the dialog
};

std::ostream& operator<<(std::ostream& os, const TCasoAzioni& c) { return os << c.nome; }

class AzioniTest : public SceltaTest, public ::testing::WithParamInterface<TCasoAzioni> {};

TEST_P(AzioniTest, WhatReachesTheRecord)
{
    const TCasoAzioni& c = GetParam();
    TDataDigit dati = Modello5();
    dati.porta = static_cast<std::int16_t>(c.portaIniziale);
    c.azioni(script);
    EXPECT_EQ(configDigit(nullptr, &digit, dati), c.risultato);
    EXPECT_EQ(std::make_tuple(dati.tipo, dati.velocita, dati.porta, dati.limitiDefiniti, dati.parita, dati.bitStop,
                              dati.numBottoni),
              std::make_tuple(c.tipo, c.velocita, c.porta, c.limitiDefiniti, c.parita, c.bitStop, c.numBottoni));
    EXPECT_EQ(dati.xMax, 3000) << "limits stay";
    EXPECT_THAT(utente.Beep(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Casi, AzioniTest,
    ::testing::Values(
        TCasoAzioni{"RadioPoiOkNonSalva", [](TBackendScript& s) { s.Clic(2127); s.Clic(2124); s.Invio(); },
                    IDOK, 5, 9600, 3, true},
        TCasoAzioni{"BottoniLeggeIRadio",
                    [](TBackendScript& s) { s.Clic(2127); s.Clic(2150); s.Esc(); s.Invio(); }, IDOK, 5, 4800, 2, true},
        TCasoAzioni{"StessaRigaRimette",
                    [](TBackendScript& s) { s.Clic(2127); s.Scegli(2120, 5); s.Clic(2150); s.Esc(); s.Invio(); },
                    IDOK, 5, 9600, 2, true},
        TCasoAzioni{"Annulla", [](TBackendScript& s) { s.Clic(2124); s.Scegli(2120, 1); s.Esc(); }, IDCANCEL, 5,
                    9600, 2, true},
        TCasoAzioni{"ModelloPoiOkTieneILimiti", [](TBackendScript& s) { s.Scegli(2120, 7); s.Invio(); }, IDOK, 7,
                    9600, 2, true, 'E', 1},
        TCasoAzioni{"UnoStopQuattroBottoni",
                    [](TBackendScript& s) { s.Clic(2138); s.Clic(2148); s.Clic(2150); s.Esc(); s.Invio(); }, IDOK, 5,
                    9600, 2, true, 'E', 1, 4},
        TCasoAzioni{"PortaFuoriDalGruppo", [](TBackendScript& s) { s.Invio(); }, IDOK, 5, 9600, 1, true, 'E', 2, 16, 7},
        TCasoAzioni{"ModelloPoiBottoniLiPerde",
                    [](TBackendScript& s) { s.Scegli(2120, 7); s.Scegli(2120, 5); s.Clic(2150); s.Esc(); s.Invio(); },
                    IDOK, 5, 9600, 2, true},
        TCasoAzioni{"RisoluzionePoiBottoni",
                    [](TBackendScript& s) { s.Clic(2144); s.Clic(2150); s.Esc(); s.Invio(); }, IDOK, 5, 9600, 2,
                    false},
        TCasoAzioni{"NessunaParita", [](TBackendScript& s) { s.Clic(2131); s.Clic(2150); s.Esc(); s.Invio(); },
                    IDOK, 5, 9600, 2, true, 'N'},
        TCasoAzioni{"ParitaPari", [](TBackendScript& s) { s.Clic(2132); s.Clic(2150); s.Esc(); s.Invio(); },
                    IDOK, 5, 9600, 2, true, 'E'},
        TCasoAzioni{"ParitaDispari", [](TBackendScript& s) { s.Clic(2133); s.Clic(2150); s.Esc(); s.Invio(); },
                    IDOK, 5, 9600, 2, true, 'O'}),
    [](const ::testing::TestParamInfo<TCasoAzioni>& i) { return std::string(i.param.nome); });

TEST_F(SceltaTest, WithoutATabletTheButtonsOnlyBeep)
{
    for (int tipo : {0, 42, -1}) {
        TDataDigit dati = Modello5();
        dati.tipo = static_cast<std::int16_t>(tipo);
        script.Clic(2150);
        script.Clic(2151);
        script.Clic(2152);
        script.Invio();
        EXPECT_EQ(configDigit(nullptr, &digit, dati), IDOK);
        EXPECT_EQ(dati.tipo, tipo) << "stored as it was";
        EXPECT_EQ(UltimoChiuso().Selezione(2120), tipo == 0 ? 0 : -1);
        EXPECT_FALSE(UltimoChiuso().Abilitato(2122));
    }
    EXPECT_THAT(Aperti(), ElementsAre(10043u, 10043u, 10043u));
    EXPECT_EQ(utente.Beep(), std::vector<unsigned>(9, 32u));
    EXPECT_THAT(utente.Messaggi(), IsEmpty());
}

TEST_F(SceltaTest, TestWithoutLimitsShowsTheBox)
{
    TDataDigit dati = Modello5();
    script.Scegli(2120, 6);  // a new model: the next button clears the limits
    script.Clic(2152);
    script.Invio();
    EXPECT_EQ(configDigit(nullptr, &digit, dati), IDOK);
    EXPECT_FALSE(dati.limitiDefiniti);
    EXPECT_THAT(Aperti(), ElementsAre(10043u));
    EXPECT_THAT(utente.Beep(), ElementsAre(48u));
    ASSERT_EQ(utente.Messaggi().size(), 1u);
    const TMessaggio m = utente.Messaggi()[0];  // its owner, the closed dialog, has no handle left to compare
    EXPECT_EQ(std::make_tuple(m.titolo, m.testo, m.flags),
              std::make_tuple("Scelta Tavoletta", "Per effettuare la prova \noccorre prima definire i limiti", 48u));
}

TEST_F(SceltaTest, CalibratedTabletAsksFirst)
{
    TDataDigit dati = Modello5();
    digit.SetDataDigit(dati);
    CDigitTestAccess::StatoCalibr(digit) = calibPtSparsi;
    utente.Rispondi(IDNO);
    EXPECT_EQ(configDigit(nullptr, &digit, dati), IDNO);
    EXPECT_THAT(Aperti(), IsEmpty());

    utente.Rispondi(IDYES);
    script.Esc();
    EXPECT_EQ(configDigit(nullptr, &digit, dati), IDCANCEL);
    EXPECT_THAT(Aperti(), ElementsAre(10043u));
    EXPECT_TRUE(digit.IsCalibrato()) << "the warning only warns";
    EXPECT_THAT(utente.Beep(), ElementsAre(32u, 32u));
    ASSERT_EQ(utente.Messaggi().size(), 2u);
    EXPECT_EQ(utente.Messaggi()[0].testo,
              "Tavoletta già calibrata \nModificando alcuni parametri si annulla la calibrazione !\n\nContinuo ?");
    EXPECT_EQ(utente.Messaggi()[0].flags, 36u);
}

}  // namespace
