// A person's whole calibration session, replayed: the dialogs are answered by
// the scripted backend, the tablet is a simulated model 5 on a pty behind
// COM1, and the map left in force is checked.
#include <gtest/gtest.h>

#include <array>
#include <future>
#include <string>
#include <vector>

#include "digit.h"
#include "velmarin.h"
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

// The 2 by 1 grid: nodes asked East index outermost. The first cell is a
// square on the tablet, (1000, 1000) to (2000, 2000), so its map is the
// affine one East = 100 + (x - 1000) / 20, North = 200 + (y - 1000) / 40;
// the second is narrow and skewed, with its reference point near the first
// cell's edge, so a point that the first cell fails to hold (its corners out
// of place) is served by the second, and told.
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

// Two points then Escape leave no map; three give the affine map; a grid
// calibration over it asks first, and an answer of No keeps it.
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
    Fine();
    ASSERT_TRUE(prima.get());
    EXPECT_TRUE(digit.IsCalibrato());
    EXPECT_FALSE(digit.IsCalibratoGriglia());
    AttesoA(500, 250, 550, 225);
    const std::size_t dialoghi = script.Chiusi().size();

    utente.Rispondi(IDNO);
    EXPECT_TRUE(digit.CalibraGriglia(nullptr));
    ASSERT_EQ(utente.Messaggi().size(), 1u);
    EXPECT_EQ(utente.Messaggi()[0].testo,
              "Tavoletta già calibrata \nContinuando si annulla la calibrazione precedente !\n\nContinuo ?");
    EXPECT_EQ(utente.Messaggi()[0].titolo, "Calibrazione Griglia");
    EXPECT_EQ(utente.Messaggi()[0].flags, MB_YESNO | MB_ICONQUESTION);
    EXPECT_EQ(utente.Beep(), std::vector<unsigned>{MB_ICONQUESTION});
    EXPECT_EQ(script.Chiusi().size(), dialoghi);
    AttesoA(1000, 400, 600, 240);
}

// Four points, and a fifth typed but given up with button 4, fit the four;
// then a grid over them. The C interface's fits, given the same points, leave
// the same maps to the bit, inside the cells, on a corner and far outside,
// and the same area. The grid is not affine, so a node stored in the wrong
// cell shows.
TEST_F(ProcedureTest, TheCInterfaceFitsWhatTheProceduresFitToTheBit)
{
    ASSERT_TRUE(sim.Valida());
    const std::int32_t campioni[][2] = {{0, 0}, {1000, 1000}, {333, 777}, {1500, 500}, {1980, 2010}, {-5000, 90000}};
    auto confronta = [&](velmarin_tablet* t, const char* quale) {
        for (const auto& c : campioni) {
            double e1 = 0, n1 = 0, e2 = 0, n2 = 0;
            ASSERT_TRUE(digit.CalcoloCoordTrasfCalibrFine(c[0], c[1], e1, n1));
            ASSERT_EQ(velmarin_to_ground(t, c[0], c[1], &e2, &n2), 1);
            EXPECT_EQ(e1, e2) << quale << " at " << c[0] << "," << c[1];
            EXPECT_EQ(n1, n2) << quale << " at " << c[0] << "," << c[1];
        }
    };

    auto punti = std::async(std::launch::async, [&] { return digit.CalibraPtSparsi(nullptr); });
    for (const TPunto& p : tre) Digitalizza(p);
    Digitalizza({1000, 1000, "604", "300"});
    Digitalizza({7, 7, "9999", "9999"}, 4);
    ASSERT_TRUE(punti.get());
    AttesoA(1000, 0, 601, 200);  // the least squares of the four
    velmarin_tablet* t = velmarin_open(nullptr);
    const std::int32_t px[] = {0, 1000, 0, 1000}, py[] = {0, 0, 1000, 1000};
    const double pe[] = {500, 600, 500, 604}, pn[] = {200, 200, 300, 300};
    ASSERT_EQ(velmarin_fit_points(t, 4, px, py, pe, pn), 1);
    confronta(t, "points");

    // Nodes of a 2 by 2 grid, East index varying fastest, none on a regular place.
    std::int32_t nx[9], ny[9];
    for (int k = 0; k < 9; ++k) {
        const int p = k % 3, q = k / 3;
        nx[k] = 1000 * p + 37 * q + 53 * p * q;
        ny[k] = 1000 * q + 23 * p - (k == 4 ? 71 : 0);
    }
    utente.Rispondi(IDYES);  // to "already calibrated"
    auto griglia = std::async(std::launch::async, [&] { return digit.CalibraGriglia(nullptr); });
    Griglia({"2", "2", "100", "200", "50", "25"});
    for (int p = 0; p <= 2; ++p)
        for (int q = 0; q <= 2; ++q) Premi(nx[q * 3 + p], ny[q * 3 + p], 1);
    ASSERT_TRUE(griglia.get());
    ASSERT_EQ(velmarin_fit_grid(t, 2, 2, 100, 200, 50, 25, nx, ny), 1);
    confronta(t, "grid");
    double a[4], b[4];
    ASSERT_TRUE(digit.GetSoloAreaCalibrata(a[0], a[1], a[2], a[3]));
    ASSERT_EQ(velmarin_calibrated_area(t, 0, &b[0], &b[1], &b[2], &b[3]), 1);
    for (int k = 0; k < 4; ++k) EXPECT_EQ(a[k], b[k]);
    velmarin_close(t);
}

}  // namespace
