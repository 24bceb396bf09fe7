// CDigit as an object: defaults, queries, button functions, assignment.
#include <gtest/gtest.h>

#include <cstring>
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

TEST(CDigitTest, DefaultsOfANewObject)
{
    CDigit d;
    const TDataDigit& dati = d.GetDataDigit();
    EXPECT_EQ(dati.porta, 2);
    EXPECT_EQ(dati.parita, 32);
    const std::uint8_t funz[16] = {1, 2, 4, 8};
    EXPECT_EQ(0, std::memcmp(dati.funzBott, funz, sizeof funz));
    EXPECT_EQ(A::StatoCalibr(d).load(), calibNessuna);
    EXPECT_EQ(A::NumQuadEst(d), -1);
    EXPECT_EQ(A::PassoNord(d), 1e-200);
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

// Buttons 1..numBottoni, never past funzBott however many a host's record
// claims; the byte is zero-extended.
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

// A calibrated grid, assigned: the target maps as the source did through
// tables and an index of its own, and the source's later changes stay its own.
TEST(CDigitTest, AssignmentCopiesTheMapIntoTheTargetsOwnTables)
{
    CDigit sorgente(Scelto(5, true));
    ASSERT_TRUE(CalibraDaNodi(sorgente, GrigliaScossa(5, 5, 400, 30, 3)));
    A::IniNord(sorgente) = 123.5;
    A::HPorta(sorgente) = 77;
    A::CoefCelle(sorgente)[20][20][7] = 9.25;  // beyond the grid: the whole tables go
    CDigit dest;
    double*** tabellaDest = A::CoefCelle(dest);
    dest = sorgente;
    EXPECT_EQ(A::CoefCelle(dest), tabellaDest) << "the target keeps its own table";
    EXPECT_TRUE(A::Indicizzato(dest));
    EXPECT_EQ(A::StatoCalibr(dest).load(), calibGriglia);
    EXPECT_EQ(A::NumQuadEst(dest), 5);
    EXPECT_EQ(A::IniNord(dest), 123.5);
    EXPECT_EQ(A::CoefCelle(dest)[20][20][7], 9.25);
    EXPECT_EQ(A::HPorta(dest), 77);
    EXPECT_EQ(dest.GetDataDigit().tipo, 5);
    double e1 = 0, n1 = 0, e2 = 0, n2 = 0;
    ASSERT_TRUE(sorgente.CalcoloCoordTrasfCalibrFine(2900, 2100, e1, n1));
    ASSERT_TRUE(dest.CalcoloCoordTrasfCalibrFine(2900, 2100, e2, n2));
    EXPECT_EQ(e1, e2);
    EXPECT_EQ(n1, n2);

    A::CoefCelle(sorgente)[20][20][7] = 1.0;
    A::AngoliX(sorgente)[0][3][2] = -5;
    EXPECT_EQ(A::CoefCelle(dest)[20][20][7], 9.25) << "no table is shared";
    EXPECT_NE(A::AngoliX(dest)[0][3][2], -5);
    A::HPorta(sorgente) = 0;  // nothing is connected: no port to close
    A::HPorta(dest) = 0;
    dest = dest;
    EXPECT_EQ(A::CoefCelle(dest)[20][20][7], 9.25);
    A::IndicizzaCelle(dest);
    ASSERT_TRUE(A::Indicizzato(dest));
    dest = CDigit();
    EXPECT_FALSE(A::Indicizzato(dest)) << "a source without an index leaves none in force";
}

TEST(CDigitTest, SetToNotCalibratoTouchesOnlyTheState)
{
    CDigit d;
    ASSERT_TRUE(CalibraDaNodi(d, GrigliaScossa(3, 2, 400, 30, 5)));
    const double coef = A::CoefCelle(d)[2][1][2];
    d.SetToNotCalibrato();
    EXPECT_EQ(A::StatoCalibr(d).load(), calibNessuna);
    EXPECT_EQ(A::NumQuadEst(d), 3);
    EXPECT_EQ(A::CoefCelle(d)[2][1][2], coef);
}

}  // namespace
