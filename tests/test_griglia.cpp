// The grid fit: one projective map per cell through its four corners.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"
#include "support/griglia_prova.h"

namespace {

using A = CDigitTestAccess;

// A solved cell's row sends each corner onto its ground; a degenerate cell is refused.
TEST(CoefOmogTest, SolvesTheCellOrRefusesIt)
{
    struct TCella {
        const char* nome;
        std::array<std::int32_t, 4> x, y;
        std::array<double, 4> est, nord;
        bool riesce;
        std::array<double, 8> coef;  // when it succeeds
    };
    const std::array<double, 4> est = {100, 100, 200, 200}, nord = {200, 300, 200, 300};
    TCella celle[] = {
        {"projective", {0, 0, 1000, 1000}, {0, 1000, 100, 900}, {0, 0, 100, 100}, {0, 100, 0, 100}, true,
         {0.08, 0, 0, -0.01, 0.1, 0, -0.0002, 0}},
        {"one position", {7, 7, 7, 7}, {9, 9, 9, 9}, est, nord, false, {}},
        {"two corners together", {500, 500, 0, 1000}, {500, 500, 1000, 1000}, est, nord, false, {}},
        {"collinear", {0, 100, 200, 300}, {0, 100, 200, 300}, est, nord, false, {}},
    };
    for (TCella& c : celle) {
        SCOPED_TRACE(c.nome);
        CDigit d;
        double coef[8];
        ASSERT_EQ(A::CalcoloCoefOmog(d, c.x.data(), c.y.data(), c.est.data(), c.nord.data(), coef), c.riesce);
        if (!c.riesce) continue;
        for (int k = 0; k < 8; ++k) EXPECT_NEAR(coef[k], c.coef[k], 1e-12) << "coefficient " << k;
        for (int k = 0; k < 4; ++k) {
            double e = 0, n = 0;
            A::CalcoloTrasfOmog(d, c.x[k], c.y[k], e, n, coef);
            EXPECT_NEAR(e, c.est[k], 1e-9) << "corner " << k;
            EXPECT_NEAR(n, c.nord[k], 1e-9) << "corner " << k;
        }
    }
}

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
