// The sparse-point fit: one affine map by least squares over the points.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"

namespace {

using A = CDigitTestAccess;

struct TPunti {
    const char* nome;
    std::vector<double> x, y, est, nord;
    bool riesce;
    double coefEst[3], coefNord[3];  // when it succeeds
    double tolleranza;
};

class PuntiSparsiTest : public ::testing::TestWithParam<TPunti> {};

// The fit lands in coefCelle[0][0] (East) and [1][1] (North), constant first,
// and sets the state; a singular fit changes neither.
TEST_P(PuntiSparsiTest, FitsOrLeavesTheObjectAsItWas)
{
    const TPunti& c = GetParam();
    CDigit d;
    double*** coef = A::CoefCelle(d);
    for (int k = 0; k < 3; ++k) coef[0][0][k] = coef[1][1][k] = -7.0;
    std::vector<double> x = c.x, y = c.y, est = c.est, nord = c.nord;
    const bool ok = A::CalcoloCoefficientiPtSparsi(d, x.data(), y.data(), est.data(), nord.data(),
                                                   static_cast<int>(x.size()));
    ASSERT_EQ(ok, c.riesce);
    if (!c.riesce) {
        EXPECT_EQ(A::StatoCalibr(d), calibNessuna);
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(coef[0][0][k], -7.0);
            EXPECT_EQ(coef[1][1][k], -7.0);
        }
        return;
    }
    EXPECT_EQ(A::StatoCalibr(d), calibPtSparsi);
    for (int k = 0; k < 3; ++k) {
        EXPECT_NEAR(coef[0][0][k], c.coefEst[k], c.tolleranza) << "East entry " << k;
        EXPECT_NEAR(coef[1][1][k], c.coefNord[k], c.tolleranza) << "North entry " << k;
    }
    EXPECT_EQ(x, c.x) << "the lists are only read";
    EXPECT_EQ(est, c.est);
}

INSTANTIATE_TEST_SUITE_P(
    Casi, PuntiSparsiTest,
    ::testing::Values(
        TPunti{"treEsatti", {0, 1000, 0}, {0, 0, 1000}, {500, 600, 500}, {200, 200, 300}, true,
               {500, 0.1, 0}, {200, 0, 0.1}, 1e-9},
        TPunti{"quattroAiMinimiQuadrati", {0, 1000, 0, 1000}, {0, 0, 1000, 1000},
               {500, 600, 500, 604}, {200, 200, 300, 300}, true, {499, 0.102, 0.002},
               {200, 0, 0.1}, 1e-9},
        TPunti{"allineati", {0, 1000, 2000}, {0, 1000, 2000}, {1, 2, 3}, {4, 5, 6}, false, {}, {}, 0},
        TPunti{"puntoRipetuto", {10, 10, 500}, {20, 20, 40}, {1, 2, 3}, {4, 5, 6}, false, {}, {}, 0},
        TPunti{"nessunPunto", {}, {}, {}, {}, false, {}, {}, 0},
        // Off a line by one count in 200000: ill-conditioned, yet no threshold
        // refuses it.
        TPunti{"quasiAllineati", {0, 100000, 200000}, {0, 100000, 200001}, {0, 100, 200},
               {0, 100, 200.001}, true, {0, 0.001, 0}, {0, 0, 0.001}, 1e-3}),
    [](const ::testing::TestParamInfo<TPunti>& i) { return std::string(i.param.nome); });

// With four points the map passes through none of the East values.
TEST(PuntiSparsiTest, LeastSquaresLeavesResiduals)
{
    CDigit d;
    double x[4] = {0, 1000, 0, 1000}, y[4] = {0, 0, 1000, 1000};
    double est[4] = {500, 600, 500, 604}, nord[4] = {200, 200, 300, 300};
    ASSERT_TRUE(A::CalcoloCoefficientiPtSparsi(d, x, y, est, nord, 4));
    for (int k = 0; k < 4; ++k) {
        double e = 0, n = 0;
        ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(static_cast<int>(x[k]), static_cast<int>(y[k]), e, n));
        EXPECT_NEAR(std::abs(e - est[k]), 1.0, 1e-9) << "point " << k;
        EXPECT_NEAR(n, nord[k], 1e-9) << "point " << k;
    }
}

// The North fit is not tried when the East fit failed, and both share one
// design matrix: a singular set flags errore whatever the ground values.
TEST(PuntiSparsiTest, CalcoloTrasfCoordFlagsASingularDesign)
{
    CDigit d;
    const double x[3] = {0, 1000, 2000}, y[3] = {0, 1000, 2000};
    const double est[3] = {1, 2, 3}, nord[3] = {4, 5, 6};
    double coefEst[3] = {9, 9, 9}, coefNord[3] = {9, 9, 9};
    bool errore = false;
    A::CalcoloTrasfCoord(d, x, y, est, nord, coefEst, coefNord, 3, errore);
    EXPECT_TRUE(errore);
    EXPECT_EQ(coefNord[0], 9) << "the North fit is skipped after a failed East fit";
}

}  // namespace
