// The three calibration dialogs driven as a person would: typing, Enter,
// Escape, and tablet presses delivered from another thread.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <ostream>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include "digit.h"
#include "reports/digit_link.h"
#include "dialogs/dialogo_digitalizza.h"
#include "platform/toldeko/disegno_testo.h"
#include "support/prova_dialoghi.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double intatto = 777.0;  // what the caller's variables hold before
constexpr int intattoInt = 777;

class DialoghiCalibrazioneTest : public TProvaDialoghi {
protected:

};

// ---------------------------------------------------------------------------
struct TCasoPunto {
    const char* est;
    const char* nord;
    bool accettato;
    double attesoEst, attesoNord;
};

std::ostream& operator<<(std::ostream& os, const TCasoPunto& c)
{
    return os << "est \"" << c.est << "\", nord \"" << c.nord << "\"";
}

class PuntoSparsoTest : public DialoghiCalibrazioneTest, public ::testing::WithParamInterface<TCasoPunto> {};

TEST_P(PuntoSparsoTest, OkAcceptsOrBeepsAndStaysOpen)
{
    const TCasoPunto& c = GetParam();
    script.Digita(2000, c.est);
    script.Digita(2001, c.nord);
    script.Invio();
    if (!c.accettato) script.Esc();  // still open: only Escape ends it

    double est = intatto, nord = intatto;
    const int risultato = dialogSelectPtiSparsi(nullptr, est, nord);

    EXPECT_EQ(risultato, c.accettato ? IDOK : IDCANCEL) << DisegnaDialogoTesto(UltimoChiuso());
    if (c.accettato) {
        EXPECT_EQ(est, c.attesoEst);
        EXPECT_EQ(nord, c.attesoNord);
        EXPECT_THAT(utente.Beep(), IsEmpty());
    } else {
        EXPECT_EQ(est, intatto);
        EXPECT_EQ(nord, intatto);
        EXPECT_THAT(utente.Beep(), ElementsAre(48u));
        EXPECT_EQ(UltimoChiuso().Testo(2000), c.est) << "texts stay as typed";
        EXPECT_EQ(UltimoChiuso().Testo(2001), c.nord);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Casi, PuntoSparsoTest,
    ::testing::Values(TCasoPunto{"", "5", false, 0, 0}, TCasoPunto{"5", "", false, 0, 0},
                      TCasoPunto{"", "", false, 0, 0}, TCasoPunto{"1.7e200", "0", false, 0, 0},
                      TCasoPunto{"0", "2e201", false, 0, 0}, TCasoPunto{"-1e999", "0", false, 0, 0},
                      TCasoPunto{"1.69e200", "-3", true, 1.69e200, -3}, TCasoPunto{"0", "0", true, 0, 0},
                      TCasoPunto{"-12.5", "1e3", true, -12.5, 1000}, TCasoPunto{".", "-", true, 0, 0}));

TEST_F(DialoghiCalibrazioneTest, EntryDialogsOpenEmptyUnderTheirCaptionsAndFilterWhatIsTyped)
{
    script.Esc();
    script.Esc();
    double est = intatto, nord = intatto, a = intatto, b = intatto, c = intatto, d = intatto;
    int n1 = intattoInt, n2 = intattoInt;
    EXPECT_EQ(dialogSelectPtiSparsi(nullptr, est, nord), IDCANCEL);
    EXPECT_EQ(UltimoChiuso().titolo, "Calibrazione per punti sparsi");
    for (int id : {2000, 2001}) EXPECT_EQ(UltimoChiuso().Testo(id), "") << id;
    EXPECT_EQ(dialogCalibraGriglia(nullptr, n1, n2, a, b, c, d), IDCANCEL);
    EXPECT_EQ(UltimoChiuso().titolo, "Calibrazione per griglia");
    for (int id = 2040; id <= 2045; ++id) EXPECT_EQ(UltimoChiuso().Testo(id), "") << id;
    EXPECT_EQ(est, intatto);
    EXPECT_EQ(n1, intattoInt);
    EXPECT_EQ(a, intatto);

    script.Digita(2000, "1x2,5");
    script.Digita(2001, "--7");
    script.Invio();
    EXPECT_EQ(dialogSelectPtiSparsi(nullptr, est, nord), IDOK);
    EXPECT_EQ(est, 125);
    EXPECT_EQ(nord, -7);
}

TEST_F(DialoghiCalibrazioneTest, RefusedPointCanBeCorrectedAndAccepted)
{
    script.Digita(2001, "4");
    script.Invio();
    script.Digita(2000, "3");
    script.Invio();
    double est = intatto, nord = intatto;
    EXPECT_EQ(dialogSelectPtiSparsi(nullptr, est, nord), IDOK);
    EXPECT_EQ(est, 3);
    EXPECT_EQ(nord, 4);
    EXPECT_THAT(utente.Beep(), ElementsAre(48u));
}

// ---------------------------------------------------------------------------
struct TCasoGriglia {
    const char* testi[6];  // 2040 to 2045
    bool accettato;
    int numEst, numNord;
    double iniEst, iniNord, passoEst, passoNord;
};

std::ostream& operator<<(std::ostream& os, const TCasoGriglia& c)
{
    for (const char* t : c.testi) os << '"' << t << "\" ";
    return os;
}

class GrigliaTest : public DialoghiCalibrazioneTest, public ::testing::WithParamInterface<TCasoGriglia> {};

TEST_P(GrigliaTest, OkRules)
{
    const TCasoGriglia& c = GetParam();
    for (int i = 0; i < 6; ++i) script.Digita(2040 + i, c.testi[i]);
    script.Invio();
    if (!c.accettato) script.Esc();

    int numEst = intattoInt, numNord = intattoInt;
    double iniEst = intatto, iniNord = intatto, passoEst = intatto, passoNord = intatto;
    const int risultato = dialogCalibraGriglia(nullptr, numEst, numNord, iniEst, iniNord, passoEst, passoNord);

    EXPECT_EQ(risultato, c.accettato ? IDOK : IDCANCEL) << DisegnaDialogoTesto(UltimoChiuso());
    if (c.accettato) {
        EXPECT_EQ(numEst, c.numEst);
        EXPECT_EQ(numNord, c.numNord);
        EXPECT_EQ(iniEst, c.iniEst);
        EXPECT_EQ(iniNord, c.iniNord);
        EXPECT_EQ(passoEst, c.passoEst);
        EXPECT_EQ(passoNord, c.passoNord);
        EXPECT_THAT(utente.Beep(), IsEmpty());
    } else {
        EXPECT_EQ(numEst, intattoInt);
        EXPECT_EQ(numNord, intattoInt);
        for (double v : {iniEst, iniNord, passoEst, passoNord}) EXPECT_EQ(v, intatto);
        EXPECT_THAT(utente.Beep(), ElementsAre(48u));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Casi, GrigliaTest,
    ::testing::Values(
        TCasoGriglia{{"3", "4", "100.5", "200", "10", "-10"}, true, 3, 4, 100.5, 200, 10, -10},
        TCasoGriglia{{"1", "1", "0", "-1e5", "0", "-0.5"}, true, 1, 1, 0, -1e5, 0, -0.5},
        TCasoGriglia{{"0", "4", "1", "1", "1", "1"}, false, 0, 0, 0, 0, 0, 0},
        TCasoGriglia{{"3", "", "1", "1", "1", "1"}, false, 0, 0, 0, 0, 0, 0},
        TCasoGriglia{{"3", "x", "1", "1", "1", "1"}, false, 0, 0, 0, 0, 0, 0},
        TCasoGriglia{{"3", "4", "", "1", "1", "1"}, false, 0, 0, 0, 0, 0, 0},
        TCasoGriglia{{"3", "4", "1", "1", "1", "1.7e200"}, false, 0, 0, 0, 0, 0, 0},
        TCasoGriglia{{"3", "4", "1", "1", "1e300", "1"}, false, 0, 0, 0, 0, 0, 0},
        TCasoGriglia{{"50", "99999999999", ".", "1", "1", "1"}, true, 50, INT_MAX, 0, 1, 1, 1}));

// ---------------------------------------------------------------------------
// The digitizing dialog. The host's thread runs dialogGetPnt; a second
// thread plays the reader thread, delivering presses to whatever target the
// dialog set.
struct TPressione {
    int bottone;  // 0: a move
    std::int32_t x, y;
};

enum class TFine { nulla, invio, esc };

struct TCasoDigitalizza {
    const char* nome;
    std::vector<TPressione> pressioni;
    TFine poi;  // what the person does after the presses
    int risultato;
    int x, y;
};

std::ostream& operator<<(std::ostream& os, const TCasoDigitalizza& c) { return os << c.nome; }

class DigitalizzaTest : public DialoghiCalibrazioneTest, public ::testing::WithParamInterface<TCasoDigitalizza> {
protected:
    // Model 1 with four buttons: 1 confirms, 2 and 3 have host functions, 4 cancels.
    DigitalizzaTest()
    {
        digit.GetDataDigit().tipo = 1;
        digit.GetDataDigit().limitiDefiniti = true;
    }
    CDigit digit;
};

TEST_P(DigitalizzaTest, PressesFromTheReaderThread)
{
    const TCasoDigitalizza& c = GetParam();
    TStatoDialogo aperto, dopoPressioni;
    bool bersaglio = false;
    std::thread lettore([&] {
        if (!script.AttendiDialogo(10042)) return;
        aperto = script.Corrente();
        CDigitNtfy* ntfy = Leggi(digitLink.ntfy);
        bersaglio = ntfy != nullptr;
        if (!ntfy) return script.Esc();
        for (const TPressione& p : c.pressioni) {
            if (p.bottone == 0)
                ntfy->NotifyMove(p.x, p.y);
            else
                ntfy->NotifyButton(p.bottone, p.x, p.y);
        }
        if (c.poi == TFine::invio) script.Invio();
        if (c.poi == TFine::esc) {
            dopoPressioni = script.Corrente();
            script.Esc();
        }
    });
    int x = intattoInt, y = intattoInt;
    const int risultato = dialogGetPnt(nullptr, "Calibrazione Griglia", &digit, 1234.5, -0.25, x, y);
    lettore.join();

    EXPECT_TRUE(bersaglio) << "the dialog made itself the target";
    EXPECT_EQ(aperto.titolo, "Calibrazione Griglia");
    EXPECT_EQ(aperto.Testo(2080), "1234.500");
    EXPECT_EQ(aperto.Testo(2081), "-0.250");
    EXPECT_EQ(risultato, c.risultato);
    EXPECT_EQ(x, c.x);
    EXPECT_EQ(y, c.y);
    EXPECT_EQ(Leggi(digitLink.ntfy), nullptr) << "the target is stopped on every way out";
    if (c.poi == TFine::esc) {
        EXPECT_EQ(dopoPressioni.Testo(2080), "1234.500") << "presses change nothing shown";
        EXPECT_EQ(dopoPressioni.modello, 10042u);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Casi, DigitalizzaTest,
    ::testing::Values(
        TCasoDigitalizza{"Conferma", {{1, 10, -20}}, TFine::nulla, IDOK, 10, -20},
        TCasoDigitalizza{"AltriBottoniNonChiudono",
                         {{2, 5, 5}, {3, 6, 6}, {5, 7, 7}, {0, 99, 99}, {1, 8, 9}}, TFine::nulla, IDOK, 8, 9},
        TCasoDigitalizza{"AnnullaDallaTavoletta", {{2, 5, 5}, {4, 1, 1}}, TFine::nulla, IDCANCEL, intattoInt,
                         intattoInt},
        TCasoDigitalizza{"EscDopoPressioni", {{2, 5, 5}, {0, 3, 3}}, TFine::esc, IDCANCEL, intattoInt, intattoInt},
        TCasoDigitalizza{"InvioSenzaPressione", {{0, 3, 3}}, TFine::invio, IDCANCEL, intattoInt, intattoInt},
        TCasoDigitalizza{"InvioDopoPressione", {{3, 40, 50}}, TFine::invio, IDOK, 40, 50}),
    [](const ::testing::TestParamInfo<TCasoDigitalizza>& i) { return std::string(i.param.nome); });

TEST_F(DigitalizzaTest, PressAfterTheCountsWereTakenChangesNothing)
{
    CDigitGetPntDialog d(nullptr, "t", &digit, 0, 0);
    d.NotifyButton(2, 5, 6);  // a host function: stored, the dialog stays
    script.Esc();
    EXPECT_EQ(d.doModal(), IDCANCEL);
    std::int32_t x = 0, y = 0;
    ASSERT_TRUE(d.PuntoDigitalizzato(x, y));
    EXPECT_EQ(x, 5);
    EXPECT_EQ(y, 6);
    d.NotifyButton(1, 7, 8);  // late: ignored
    ASSERT_TRUE(d.PuntoDigitalizzato(x, y));
    EXPECT_EQ(x, 5);
    EXPECT_EQ(y, 6);
}

TEST_F(DialoghiCalibrazioneTest, DigitizingWithoutATabletObjectOpensNothing)
{
    int x = intattoInt, y = intattoInt;
    EXPECT_EQ(dialogGetPnt(nullptr, "t", nullptr, 0, 0, x, y), IDCANCEL);
    EXPECT_THAT(script.Chiusi(), IsEmpty());
    EXPECT_EQ(x, intattoInt);
}

}  // namespace
