// The calibration dialogs worked by a person: typing, Enter, Escape, presses from another thread.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "digit.h"
#include "dialogs/dialogo_digitalizza.h"
#include "platform/toldeko/disegno_testo.h"
#include "support/prova_dialoghi.h"

namespace {

using ::testing::IsEmpty;

constexpr double intatto = 777.0;  // what the caller's variables hold before
constexpr int intattoInt = 777;

using DialoghiCalibrazioneTest = TProvaDialoghi;

// The entry dialogs: the point's two fields (2000, 2001) or the grid's six
// (2040 to 2045) typed, then Enter; a refused entry beeps and stays open,
// and only Escape ends it.
struct TCasoEntrata {
    int campi;
    const char* testi[6];
    bool accettato;
    double attesi[6];
};

std::ostream& operator<<(std::ostream& os, const TCasoEntrata& c)
{
    for (int k = 0; k < c.campi; ++k) os << '"' << c.testi[k] << "\" ";
    return os;
}

class EntrataTest : public TProvaDialoghi, public ::testing::WithParamInterface<TCasoEntrata> {};

TEST_P(EntrataTest, OkAcceptsOrBeepsAndStaysOpen)
{
    const TCasoEntrata& c = GetParam();
    const bool griglia = c.campi == 6;
    const int primo = griglia ? 2040 : 2000;
    for (int k = 0; k < c.campi; ++k) script.Digita(primo + k, c.testi[k]);
    script.Invio();
    if (!c.accettato) script.Esc();

    double v[6] = {intatto, intatto, intatto, intatto, intatto, intatto};
    int numEst = intattoInt, numNord = intattoInt;
    const int risultato = griglia ? dialogCalibraGriglia(nullptr, numEst, numNord, v[2], v[3], v[4], v[5])
                                  : dialogSelectPtiSparsi(nullptr, v[0], v[1]);
    if (griglia) v[0] = numEst, v[1] = numNord;

    EXPECT_EQ(risultato, c.accettato ? IDOK : IDCANCEL) << DisegnaDialogoTesto(UltimoChiuso());
    for (int k = 0; k < c.campi; ++k) EXPECT_EQ(v[k], c.accettato ? c.attesi[k] : intatto) << "field " << k;
    EXPECT_EQ(utente.Beep(), c.accettato ? std::vector<unsigned>{} : std::vector<unsigned>{48});
    for (int k = 0; k < 2 && !c.accettato && !griglia; ++k)
        EXPECT_EQ(UltimoChiuso().Testo(primo + k), c.testi[k]) << "texts stay as typed";
}

INSTANTIATE_TEST_SUITE_P(
    Punto, EntrataTest,
    ::testing::Values(TCasoEntrata{2, {"", "5"}, false, {}}, TCasoEntrata{2, {"5", ""}, false, {}},
                      TCasoEntrata{2, {"", ""}, false, {}}, TCasoEntrata{2, {"1.7e200", "0"}, false, {}},
                      TCasoEntrata{2, {"0", "2e201"}, false, {}}, TCasoEntrata{2, {"-1e999", "0"}, false, {}},
                      TCasoEntrata{2, {"1.69e200", "-3"}, true, {1.69e200, -3}},
                      TCasoEntrata{2, {"0", "0"}, true, {0, 0}}, TCasoEntrata{2, {"-12.5", "1e3"}, true, {-12.5, 1000}},
                      TCasoEntrata{2, {".", "-"}, true, {0, 0}},
                      // What the validator refuses is never typed; Backspace
                      // erases the last character, and nothing in an empty field.
                      TCasoEntrata{2, {"1x2,5", "--7"}, true, {125, -7}},
                      TCasoEntrata{2, {"12\b3", "\b\b-5"}, true, {13, -5}}));

INSTANTIATE_TEST_SUITE_P(
    Griglia, EntrataTest,
    ::testing::Values(
        TCasoEntrata{6, {"3", "4", "100.5", "200", "10", "-10"}, true, {3, 4, 100.5, 200, 10, -10}},
        TCasoEntrata{6, {"1", "1", "0", "-1e5", "0", "-0.5"}, true, {1, 1, 0, -1e5, 0, -0.5}},
        TCasoEntrata{6, {"0", "4", "1", "1", "1", "1"}, false, {}},
        TCasoEntrata{6, {"3", "", "1", "1", "1", "1"}, false, {}},
        TCasoEntrata{6, {"3", "x", "1", "1", "1", "1"}, false, {}},
        TCasoEntrata{6, {"3", "4", "", "1", "1", "1"}, false, {}},
        TCasoEntrata{6, {"3", "4", "1", "1", "1", "1.7e200"}, false, {}},
        TCasoEntrata{6, {"3", "4", "1", "1", "1e300", "1"}, false, {}},
        TCasoEntrata{6, {"50", "99999999999", ".", "1", "1", "1"}, true, {50, INT_MAX, 0, 1, 1, 1}}));

// The digitizing dialog on model 1: button 1 confirms, 2 and 3 are the host's, 4 cancels.
enum class TFine { nulla, invio, esc };

struct TCasoDigitalizza {
    const char* nome;
    std::vector<TPressione> pressioni;
    TFine poi;  // what the person does after the presses
    int risultato;
    int x, y;
};

std::ostream& operator<<(std::ostream& os, const TCasoDigitalizza& c) { return os << c.nome; }

class DigitalizzaTest : public TProvaDialoghi, public ::testing::WithParamInterface<TCasoDigitalizza> {
protected:
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
    int x = intattoInt, y = intattoInt;
    const int risultato = Esegui(
        10042, [&] { return dialogGetPnt(nullptr, "Calibrazione Griglia", &digit, 1.23e-5, -0.0, x, y); },
        [&](CDigitNtfy& ntfy) {
            aperto = script.Corrente();
            Suona(ntfy, c.pressioni);
            dopoPressioni = script.Corrente();
            if (c.poi == TFine::invio) script.Invio();
            if (c.poi == TFine::esc) script.Esc();
        });

    EXPECT_EQ(aperto.titolo, "Calibrazione Griglia");
    EXPECT_EQ(aperto.Testo(2080), "1.23e-05");  // the digits it needs, not "0.000"
    EXPECT_EQ(aperto.Testo(2081), "0");         // and no negative zero
    EXPECT_EQ(std::make_tuple(risultato, x, y), std::make_tuple(c.risultato, c.x, c.y));
    EXPECT_EQ(Leggi(digitLink.ntfy), nullptr) << "the target is stopped on every way out";
    if (c.poi == TFine::esc) {
        EXPECT_EQ(dopoPressioni.Testo(2080), "1.23e-05") << "presses change nothing shown";
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

// After the ending press, or the owner's reading, a press changes nothing.
TEST_F(DigitalizzaTest, PressesAfterTheEndChangeNothing)
{
    for (int fine : {1, 4, 2}) {  // confirm, cancel, a host function and then the owner's take
        CDigitGetPntDialog d(nullptr, "t", &digit, 0, 0);
        d.NotifyButton(fine, 5, 6);
        std::int32_t x = 0, y = 0;
        if (fine == 2) {
            ASSERT_TRUE(d.PuntoDigitalizzato(x, y));
        }
        d.NotifyButton(2, 99, 99);
        d.NotifyButton(1, 7, 8);
        ASSERT_TRUE(d.PuntoDigitalizzato(x, y));
        EXPECT_EQ(x, 5) << "ended by button " << fine;
        EXPECT_EQ(y, 6) << "ended by button " << fine;
    }
}

TEST_F(DialoghiCalibrazioneTest, DigitizingWithoutATabletObjectOpensNothing)
{
    int x = intattoInt, y = intattoInt;
    EXPECT_EQ(dialogGetPnt(nullptr, "t", nullptr, 0, 0, x, y), IDCANCEL);
    EXPECT_THAT(script.Chiusi(), IsEmpty());
    EXPECT_EQ(x, intattoInt);
}

}  // namespace
