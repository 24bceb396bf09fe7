// CDigit as an object: defaults, queries, button functions, assignment.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"
#include "support/griglia_prova.h"

namespace {

using A = CDigitTestAccess;

TDataDigit Scelto(int tipo, bool limiti, int numBottoni = 4)
{
    TDataDigit dati = CDigit().GetDataDigit();
    dati.tipo = static_cast<std::int16_t>(tipo);
    dati.limitiDefiniti = limiti;
    dati.numBottoni = static_cast<std::int16_t>(numBottoni);
    return dati;
}

// What only a new object shows (its port and buttons are the selection's first row).
TEST(CDigitTest, DefaultsOfANewObject)
{
    CDigit d;
    EXPECT_EQ(d.GetDataDigit().parita, ' ');
    EXPECT_FALSE(d.IsCalibrato());
    EXPECT_EQ(d.GetFunzButt(1), 0) << "no model chosen: no function";
}

TEST(CDigitTest, QueriesOfTheChoiceAndTheCalibration)
{
    const struct {
        int tipo;
        bool limiti;
        int stato;
        bool scelto, calibrato, griglia;
    } righe[] = {{5, false, calibGriglia, false, false, false}, {0, true, calibGriglia, false, false, false},
                 {5, true, calibNessuna, true, false, false},   {5, true, calibPtSparsi, true, true, false},
                 {5, true, calibGriglia, true, true, true},     {-3, true, calibGriglia, false, false, false}};
    for (const auto& q : righe) {
        CDigit d(Scelto(q.tipo, q.limiti));
        A::StatoCalibr(d) = q.stato;
        SCOPED_TRACE(testing::Message() << q.tipo << " " << q.limiti << " " << q.stato);
        EXPECT_EQ(d.IsScelto(), q.scelto);
        EXPECT_EQ(d.IsCalibrato(), q.calibrato);
        EXPECT_EQ(d.IsCalibratoGriglia(), q.griglia);
    }
}

// Buttons 1..numBottoni, never past funzBott whatever the record claims; the byte zero-extended.
TEST(CDigitTest, GetFunzButtStaysWithinTheButtons)
{
    TDataDigit dati = Scelto(1, false, 4);
    for (int i = 0; i < 16; ++i) dati.funzBott[i] = static_cast<std::uint8_t>(i + 200);
    const struct {
        int numBottoni;
        std::vector<std::pair<int, int>> attese;  // button, function
    } casi[] = {{4, {{1, 200}, {4, 203}, {5, 0}, {0, 0}, {-1, 0}}}, {16, {{16, 215}, {17, 0}}}, {400, {{17, 0}, {400, 0}}}};
    for (const auto& c : casi) {
        dati.numBottoni = static_cast<std::int16_t>(c.numBottoni);
        const CDigit d(dati);
        for (const auto& [bottone, funzione] : c.attese) EXPECT_EQ(d.GetFunzButt(bottone), funzione) << bottone;
    }
}

// An assigned grid maps as its source did, and keeps doing so when the source calibrates again.
TEST(CDigitTest, AssignmentCopiesTheMapIntoTheTargetsOwnTables)
{
    CDigit sorgente(Scelto(5, true)), dest(Scelto(5, true));
    ASSERT_TRUE(CalibraDaNodi(sorgente, GrigliaScossa(5, 5, 400, 30, 3)));
    ASSERT_TRUE(CalibraDaNodi(dest, GrigliaScossa(2, 2, 900, 30, 4)));  // an index of its own, to be replaced
    A::HPorta(sorgente) = 77;
    A::IniEst(sorgente) = 1000, A::IniNord(sorgente) = 2000, A::PassoEst(sorgente) = A::PassoNord(sorgente) = 50;
    dest = sorgente;
    EXPECT_EQ(A::HPorta(dest), 77);
    A::HPorta(sorgente) = A::HPorta(dest) = 0;  // nothing is connected: no port to close
    double e1 = 0, n1 = 0, e2 = 0, n2 = 0, a[4], b[4];
    ASSERT_TRUE(sorgente.CalcoloCoordTrasfCalibrFine(2900, 2100, e1, n1));
    ASSERT_TRUE(dest.CalcoloCoordTrasfCalibrFine(2900, 2100, e2, n2));
    EXPECT_EQ(std::make_pair(e1, n1), std::make_pair(e2, n2));
    ASSERT_TRUE(sorgente.GetSoloAreaCalibrata(a[0], a[1], a[2], a[3]) && dest.GetSoloAreaCalibrata(b[0], b[1], b[2], b[3]));
    EXPECT_TRUE(std::equal(a, a + 4, b));

    ASSERT_TRUE(CalibraDaNodi(sorgente, GrigliaScossa(3, 2, 700, 30, 9)));
    dest = dest;
    ASSERT_TRUE(dest.CalcoloCoordTrasfCalibrFine(2900, 2100, e1, n1));
    EXPECT_EQ(std::make_pair(e1, n1), std::make_pair(e2, n2)) << "no table is shared, and self-assignment keeps it";
    dest = CDigit();
    EXPECT_FALSE(dest.CalcoloCoordTrasfCalibrFine(2900, 2100, e1, n1)) << "an uncalibrated source leaves no map";
}

}  // namespace
