// Whole calibration sessions: scripted dialogs, a simulated model 5 behind
// COM1, and the map left in force.
#include <gtest/gtest.h>

#include <array>
#include <future>
#include <string>
#include <vector>

#include "digit.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_dialoghi.h"
#include "support/prova_su_linea.h"
#include "support/ripeti.h"
#include "support/tick_finto.h"

namespace {

constexpr int tipo = 5;
constexpr std::size_t lenReport = 20;
constexpr unsigned dialogoPunto = 10040, dialogoGriglia = 10041, dialogoDigitalizza = 10042;

struct TPunto {
    std::int32_t x, y;
    const char* est;
    const char* nord;
};

class ProcedureTest : public TProvaDialoghi {
protected:
    ProcedureTest()
    {
        TDataDigit d = DatiModello(tipo, 1);
        d.numBottoni = 16;
        for (auto& f : d.funzBott) f = funzNessuna;
        d.funzBott[0] = funzConferma;
        d.funzBott[3] = funzAnnulla;
        d.limitiDefiniti = true;
        d.xMax = d.yMax = 100000;
        digit.SetDataDigit(d);
    }
    ~ProcedureTest() override { digit.StopCommNotification(); }

    // The pointer rests at (x, y) first, so that the press is an edge; the
    // press is sent again until heard, since a read may merge two sends.
    void Premi(std::int32_t x, std::int32_t y, int bottone)
    {
        ASSERT_TRUE(script.AttendiDialogo(dialogoDigitalizza));
        const std::size_t chiusi = Chiusi(dialogoDigitalizza) + 1;
        for (int k = 0; k < 2; ++k) ASSERT_TRUE(sim.InviaStato(tipo, {x, y, 0}, lenReport));
        ASSERT_TRUE(RipetiFinche([&] { return Chiusi(dialogoDigitalizza) >= chiusi; },
                                 [&] { sim.InviaStato(tipo, {x, y, bottone}, lenReport); }));
    }
    void Digitalizza(const TPunto& p, int bottone = 1)
    {
        ASSERT_TRUE(script.AttendiDialogo(dialogoPunto));
        script.Digita(2000, p.est);
        script.Digita(2001, p.nord);
        script.Invio();
        Premi(p.x, p.y, bottone);
    }
    void Griglia(const std::array<const char*, 6>& valori)
    {
        ASSERT_TRUE(script.AttendiDialogo(dialogoGriglia));
        for (int k = 0; k < 6; ++k) script.Digita(2040 + k, valori[k]);
        script.Invio();
    }
    void Fine()
    {
        ASSERT_TRUE(script.AttendiDialogo(dialogoPunto));
        script.Esc();
    }
    std::size_t Chiusi(unsigned modello) const
    {
        std::size_t n = 0;
        for (const auto& c : script.Chiusi()) n += c.stato.modello == modello;
        return n;
    }
    // The map in force takes (x, y) to (est, nord).
    void AttesoA(std::int32_t x, std::int32_t y, double est, double nord)
    {
        double e = 0, n = 0;
        ASSERT_TRUE(digit.CalcoloCoordTrasfCalibrFine(x, y, e, n)) << x << "," << y;
        EXPECT_NEAR(e, est, 1e-9) << x << "," << y;
        EXPECT_NEAR(n, nord, 1e-9) << x << "," << y;
    }

    TTickFinto tick;  // the tablet's command waits cost no real time
    TTavolettaPty sim{1};
    CDigit digit;
};

const TPunto tre[] = {{0, 0, "500", "200"}, {1000, 0, "600", "200"}, {0, 1000, "500", "300"}};

// The 2 by 1 grid, nodes asked East index outermost. The first cell is the
// square (1000, 1000)-(2000, 2000): East = 100 + (x - 1000) / 20, North =
// 200 + (y - 1000) / 40; the second is skewed, its reference point near the
// first's edge, so a point the first fails to hold goes to it.
TEST_F(ProcedureTest, TwoByOneGridAskedInOrderThenMapped)
{
    ASSERT_TRUE(sim.Valida());
    auto esito = std::async(std::launch::async, [&] { return digit.CalibraGriglia(nullptr); });
    Griglia({"2", "1", "100", "200", "50", "25"});

    const double attesi[][2] = {{100, 200}, {100, 225}, {150, 200}, {150, 225}, {200, 200}, {200, 225}};
    const std::int32_t nodi[][2] = {{1000, 1000}, {1000, 2000}, {2000, 1000}, {2000, 2000}, {2300, 600}, {2200, 2000}};
    for (int n = 0; n < 6; ++n) {
        ASSERT_TRUE(script.AttendiDialogo(dialogoDigitalizza));
        const TStatoDialogo mostrato = script.Corrente();
        EXPECT_DOUBLE_EQ(std::stod(mostrato.Testo(2080)), attesi[n][0]) << "node " << n;
        EXPECT_DOUBLE_EQ(std::stod(mostrato.Testo(2081)), attesi[n][1]) << "node " << n;
        Premi(nodi[n][0], nodi[n][1], 1);
    }
    ASSERT_TRUE(esito.get());
    EXPECT_TRUE(digit.IsCalibratoGriglia());
    AttesoA(1980, 1500, 149, 212.5);
    AttesoA(1020, 1980, 101, 224.5);
    AttesoA(1990, 1010, 149.5, 200.25);
}

// Two points then Escape leave no map; three (a fourth given up) give their
// affine map, which a grid calibration asks before replacing: No keeps it.

TEST_F(ProcedureTest, ThreePointsGiveTheAffineMapAndAnsweringNoKeepsIt)
{
    ASSERT_TRUE(sim.Valida());
    auto poche = std::async(std::launch::async, [&] { return digit.CalibraPtSparsi(nullptr); });
    Digitalizza(tre[0]);
    Digitalizza(tre[1]);
    Fine();
    EXPECT_FALSE(poche.get());
    EXPECT_FALSE(digit.IsCalibrato());

    auto prima = std::async(std::launch::async, [&] { return digit.CalibraPtSparsi(nullptr); });
    for (const TPunto& p : tre) Digitalizza(p);
    Digitalizza({7, 7, "9999", "9999"}, 4);  // typed, then given up with button 4: not fitted
    ASSERT_TRUE(prima.get());
    EXPECT_TRUE(digit.IsCalibrato());
    EXPECT_FALSE(digit.IsCalibratoGriglia());
    AttesoA(500, 250, 550, 225);
    const std::size_t dialoghi = script.Chiusi().size();

    utente.Rispondi(IDNO);
    EXPECT_TRUE(digit.CalibraGriglia(nullptr));
    EXPECT_EQ(utente.Messaggi(), (std::vector<TMessaggio>{{nullptr, "Tavoletta già calibrata \nContinuando si annulla la calibrazione precedente !\n\nContinuo ?",
                                                           "Calibrazione Griglia", MB_YESNO | MB_ICONQUESTION}}));
    EXPECT_EQ(utente.Beep(), std::vector<unsigned>{MB_ICONQUESTION});
    EXPECT_EQ(script.Chiusi().size(), dialoghi);
    AttesoA(1000, 400, 600, 240);
}

}  // namespace
