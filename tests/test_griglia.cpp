// The grid fit: one projective map per cell through its four corners.
#include <gtest/gtest.h>

#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"
#include "support/griglia_prova.h"

namespace {

using A = CDigitTestAccess;

// East index outermost; the first unsolvable cell stops, those before keep their rows.
TEST(CoefficientiOmogTest, StopsAtTheFirstUnsolvableCell)
{
    CDigit d;
    TNodi nodi = GrigliaScossa(2, 2, 1000, 0, 1);
    // Cell (1, 0) gets two ground positions at one tablet position; (0, 0)
    // and (0, 1) come before it, (1, 1) after it.
    nodi[2][1] = nodi[2][0];
    double*** coef = A::CoefCelle(d);
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 2; ++j) coef[i][j][0] = -7.0;
    EXPECT_FALSE(CalibraDaNodi(d, nodi));
    EXPECT_EQ(A::StatoCalibr(d).load(), calibNessuna);
    EXPECT_NE(coef[0][0][0], -7.0);
    EXPECT_NE(coef[0][1][0], -7.0);
    EXPECT_EQ(coef[1][1][0], -7.0);
}

// Every node of regular grids of every size maps back; a count above the tables is cut to them.

TEST(CoefficientiOmogTest, EveryNodeMapsBackToItsGround)
{
    const int dimensioni[][4] = {{1, 1, -1, -1}, {2, 1, -1, -1}, {1, 5, -1, -1}, {7, 4, -1, -1},
                                 {maxQuadrati, maxQuadrati, -1, -1}, {maxQuadrati, maxQuadrati, 40, 1000}};
    unsigned seme = 11;
    for (const auto& dim : dimensioni) {
        SCOPED_TRACE(++seme);
        CDigit d;
        const TNodi nodi = GrigliaScossa(dim[0], dim[1], 500, 60, seme);
        ASSERT_TRUE(CalibraDaNodi(d, nodi, dim[2], dim[3]));
        ASSERT_EQ(A::StatoCalibr(d).load(), calibGriglia);
        ASSERT_TRUE(A::Indicizzato(d)) << "the fit indexes its cells";
        for (int p = 0; p <= dim[0]; ++p)
            for (int q = 0; q <= dim[1]; ++q) {
                double e = 0, n = 0;
                ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(nodi[p][q].x, nodi[p][q].y, e, n));
                EXPECT_NEAR(e, nodi[p][q].est, 1e-9) << "node " << p << "," << q;
                EXPECT_NEAR(n, nodi[p][q].nord, 1e-9) << "node " << p << "," << q;
            }
        EXPECT_EQ(A::NumQuadEst(d), dim[2] < 0 ? dim[0] : dim[2]);
    }
}

}  // namespace
