// CDigit as an object: defaults, queries, button functions, assignment.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "digit.h"
#include "support/digit_accesso.h"

namespace {

using A = CDigitTestAccess;

TDataDigit Scelto(int tipo, bool limiti, int numBottoni = 4)
{
    CDigit d;
    TDataDigit dati = d.GetDataDigit();
    dati.tipo = static_cast<std::int16_t>(tipo);
    dati.limitiDefiniti = limiti;
    dati.numBottoni = static_cast<std::int16_t>(numBottoni);
    return dati;
}

TEST(CDigitTest, DefaultsOfANewObject)
{
    CDigit d;
    const TDataDigit& dati = d.GetDataDigit();
    EXPECT_EQ(dati.tipo, 0);
    EXPECT_EQ(dati.porta, 2);
    EXPECT_EQ(dati.parita, 32);
    EXPECT_EQ(dati.numBottoni, 4);
    const std::uint8_t funz[16] = {1, 2, 4, 8};
    EXPECT_EQ(0, std::memcmp(dati.funzBott, funz, sizeof funz));
    EXPECT_FALSE(dati.limitiDefiniti);
    EXPECT_EQ(A::StatoCalibr(d).load(), calibNessuna);
    EXPECT_EQ(A::NumQuadEst(d), -1);
    EXPECT_EQ(A::PassoNord(d), 1e-200);
    EXPECT_EQ(A::HPorta(d), 0);
    EXPECT_EQ(d.GetFunzButt(1), 0) << "no model chosen: no function";
    EXPECT_FALSE(d.IsScelto());
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

TEST(CDigitTest, GetFunzButtStaysWithinTheButtons)
{
    TDataDigit dati = Scelto(1, false, 4);
    for (int i = 0; i < 16; ++i) dati.funzBott[i] = static_cast<std::uint8_t>(i + 200);
    CDigit d(dati);
    EXPECT_EQ(d.GetFunzButt(1), 200) << "zero-extended byte";
    EXPECT_EQ(d.GetFunzButt(4), 203);
    EXPECT_EQ(d.GetFunzButt(5), 0);
    EXPECT_EQ(d.GetFunzButt(0), 0);
    EXPECT_EQ(d.GetFunzButt(-1), 0);

    dati.numBottoni = 16;
    d.SetDataDigit(dati);
    EXPECT_EQ(d.GetFunzButt(16), 215);
    EXPECT_EQ(d.GetFunzButt(17), 0);

    dati.numBottoni = 400;  // a host's bad record never reads past funzBott
    d.SetDataDigit(dati);
    EXPECT_EQ(d.GetFunzButt(17), 0);
    EXPECT_EQ(d.GetFunzButt(400), 0);
}

TEST(CDigitTest, SetToNotCalibratoTouchesOnlyTheState)
{
    CDigit d(Scelto(5, true));
    A::StatoCalibr(d) = calibGriglia;
    A::NumQuadEst(d) = 3;
    A::CoefCelle(d)[2][1][7] = 42.5;
    d.SetToNotCalibrato();
    EXPECT_EQ(A::StatoCalibr(d).load(), calibNessuna);
    EXPECT_EQ(A::NumQuadEst(d), 3);
    EXPECT_EQ(A::CoefCelle(d)[2][1][7], 42.5);
}

TEST(CDigitTest, AssignmentCopiesTheMapIntoTheTargetsOwnTables)
{
    CDigit sorgente(Scelto(5, true));
    A::StatoCalibr(sorgente) = calibGriglia;
    A::NumQuadEst(sorgente) = 2;
    A::IniNord(sorgente) = 123.5;
    A::HPorta(sorgente) = 77;
    A::CoefCelle(sorgente)[20][20][7] = 9.25;
    A::AngoliX(sorgente)[0][3][2] = -5;
    A::AngoliY(sorgente)[13][0][3] = 6;

    CDigit dest;
    double*** tabellaDest = A::CoefCelle(dest);
    dest = sorgente;
    EXPECT_EQ(A::CoefCelle(dest), tabellaDest) << "the target keeps its own table";
    EXPECT_EQ(A::CoefCelle(dest)[20][20][7], 9.25);
    EXPECT_EQ(A::AngoliX(dest)[0][3][2], -5);
    EXPECT_EQ(A::AngoliY(dest)[13][0][3], 6);
    EXPECT_EQ(A::StatoCalibr(dest).load(), calibGriglia);
    EXPECT_EQ(A::NumQuadEst(dest), 2);
    EXPECT_EQ(A::IniNord(dest), 123.5);
    EXPECT_EQ(A::HPorta(dest), 77);
    EXPECT_EQ(dest.GetDataDigit().tipo, 5);

    A::CoefCelle(sorgente)[20][20][7] = 1.0;
    EXPECT_EQ(A::CoefCelle(dest)[20][20][7], 9.25) << "no table is shared";
    A::HPorta(sorgente) = 0;  // nothing is connected: no port to close
    A::HPorta(dest) = 0;

    dest = dest;
    EXPECT_EQ(A::CoefCelle(dest)[20][20][7], 9.25);
}

}  // namespace
