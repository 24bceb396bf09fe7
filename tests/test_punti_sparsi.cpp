// The sparse-point fit: one affine map by least squares over the points.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"

namespace {

using A = CDigitTestAccess;

// The fit lands in coefCelle[0][0] (East) and [1][1] (North), constant first,
// and sets the state; a singular fit changes neither, and the lists are only
// read.
TEST(PuntiSparsiTest, FitsOrLeavesTheObjectAsItWas)
{
    struct TPunti {
        const char* nome;
        std::vector<double> x, y, est, nord;
        bool riesce;
        double coefEst[3], coefNord[3], tolleranza;  // when it succeeds
        double residuoEst;                           // |map - East| at every point; North fits them all
    };
    const TPunti casi[] = {
        {"three exact", {0, 1000, 0}, {0, 0, 1000}, {500, 600, 500}, {200, 200, 300}, true, {500, 0.1, 0},
         {200, 0, 0.1}, 1e-9, 0},
        // A fourth point: least squares, through none of the East values.
        {"four", {0, 1000, 0, 1000}, {0, 0, 1000, 1000}, {500, 600, 500, 604}, {200, 200, 300, 300}, true,
         {499, 0.102, 0.002}, {200, 0, 0.1}, 1e-9, 1},
        {"collinear", {0, 1000, 2000}, {0, 1000, 2000}, {1, 2, 3}, {4, 5, 6}, false, {}, {}, 0, 0},
        {"repeated point", {10, 10, 500}, {20, 20, 40}, {1, 2, 3}, {4, 5, 6}, false, {}, {}, 0, 0},
        {"no points", {}, {}, {}, {}, false, {}, {}, 0, 0},
        // Off a line by one count in 200000: ill-conditioned, yet no
        // threshold refuses it.
        {"nearly collinear", {0, 100000, 200000}, {0, 100000, 200001}, {0, 100, 200}, {0, 100, 200.001}, true,
         {0, 0.001, 0}, {0, 0, 0.001}, 1e-3, 0},
    };
    for (const TPunti& c : casi) {
        SCOPED_TRACE(c.nome);
        CDigit d;
        double*** coef = A::CoefCelle(d);
        for (int k = 0; k < 3; ++k) coef[0][0][k] = coef[1][1][k] = -7.0;
        std::vector<double> x = c.x, y = c.y, est = c.est, nord = c.nord;
        const int n = static_cast<int>(x.size());
        ASSERT_EQ(A::CalcoloCoefficientiPtSparsi(d, x.data(), y.data(), est.data(), nord.data(), n), c.riesce);
        EXPECT_EQ(A::StatoCalibr(d).load(), c.riesce ? calibPtSparsi : calibNessuna);
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(coef[0][0][k], c.riesce ? c.coefEst[k] : -7.0, c.tolleranza) << "East " << k;
            EXPECT_NEAR(coef[1][1][k], c.riesce ? c.coefNord[k] : -7.0, c.tolleranza) << "North " << k;
        }
        EXPECT_EQ(est, c.est);
        for (int k = 0; k < n && c.riesce; ++k) {
            double e = 0, nd = 0;
            ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(static_cast<int>(x[k]), static_cast<int>(y[k]), e, nd));
            EXPECT_NEAR(std::abs(e - est[k]), c.residuoEst, c.tolleranza) << "point " << k;
            EXPECT_NEAR(nd, nord[k], c.tolleranza) << "point " << k;
        }
    }
}

}  // namespace
