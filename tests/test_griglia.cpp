// The grid fit: one projective map per cell through its four corners.
#include <gtest/gtest.h>

#include <ostream>

#include <array>
#include <string>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"
#include "support/griglia_prova.h"

namespace {

using A = CDigitTestAccess;

struct TCella {
    const char* nome;
    std::array<std::int32_t, 4> x, y;
    std::array<double, 4> est, nord;
    bool riesce;
    std::array<double, 8> coef;  // when it succeeds
};
void PrintTo(const TCella& p, std::ostream* os) { *os << p.nome; }

constexpr std::array<double, 4> estAffine = {100, 100, 200, 200};
constexpr std::array<double, 4> nordAffine = {200, 300, 200, 300};

class CoefOmogTest : public ::testing::TestWithParam<TCella> {};

// A solved cell's row reproduces the expected coefficients and sends each
// corner onto its ground position; a degenerate cell is refused.
TEST_P(CoefOmogTest, SolvesTheCellOrRefusesIt)
{
    TCella c = GetParam();
    CDigit d;
    double coef[8];
    const bool ok = A::CalcoloCoefOmog(d, c.x.data(), c.y.data(), c.est.data(), c.nord.data(), coef);
    ASSERT_EQ(ok, c.riesce);
    if (!ok) return;
    for (int k = 0; k < 8; ++k) EXPECT_NEAR(coef[k], c.coef[k], 1e-12) << "coefficient " << k;
    for (int k = 0; k < 4; ++k) {
        double e = 0, n = 0;
        A::CalcoloTrasfOmog(d, c.x[k], c.y[k], e, n, coef);
        EXPECT_NEAR(e, c.est[k], 1e-9) << "corner " << k;
        EXPECT_NEAR(n, c.nord[k], 1e-9) << "corner " << k;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Celle, CoefOmogTest,
    ::testing::Values(
        TCella{"affine", {0, 0, 1000, 1000}, {0, 1000, 0, 1000}, estAffine, nordAffine, true,
               {0.1, 0, 100, 0, 0.1, 200, 0, 0}},
        TCella{"proiettiva", {0, 0, 1000, 1000}, {0, 1000, 100, 900}, {0, 0, 100, 100},
               {0, 100, 0, 100}, true, {0.08, 0, 0, -0.01, 0.1, 0, -0.0002, 0}},
        TCella{"unaPosizione", {7, 7, 7, 7}, {9, 9, 9, 9}, estAffine, nordAffine, false, {}},
        TCella{"dueAngoliInsieme", {500, 500, 0, 1000}, {500, 500, 1000, 1000}, estAffine,
               nordAffine, false, {}},
        TCella{"allineati", {0, 100, 200, 300}, {0, 100, 200, 300}, estAffine, nordAffine, false,
               {}}),
    [](const ::testing::TestParamInfo<TCella>& i) { return std::string(i.param.nome); });

// Cells are solved East index outermost; the first unsolvable one stops the
// work, the cells before it keep their new rows, and the state stays.
TEST(CoefficientiOmogTest, StopsAtTheFirstUnsolvableCell)
{
    CDigit d;
    TNodi nodi = GrigliaScossa(2, 2, 1000, 0, 1);
    // Node (2, 1) digitized at the position of node (2, 0): cell (1, 0) has
    // two ground positions at one tablet position; (0, 0) and (0, 1) come
    // before it, (1, 1) after it.
    nodi[2][1] = nodi[2][0];
    double*** coef = A::CoefCelle(d);
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 2; ++j) coef[i][j][0] = -7.0;
    EXPECT_FALSE(CalibraDaNodi(d, nodi));
    EXPECT_EQ(A::StatoCalibr(d).load(), calibNessuna);
    EXPECT_NE(coef[0][0][0], -7.0) << "cell (0, 0) was solved before";
    EXPECT_NE(coef[0][1][0], -7.0) << "cell (0, 1) was solved before";
    EXPECT_EQ(coef[1][1][0], -7.0) << "cell (1, 1) comes after the failure";
}

// Round trip: on well-shaped grids of every size, each digitized node maps
// back onto its ground position. A count above the tables (40 by 1000 on
// 21 by 21 nodes' worth) is cut to the cells they hold: nothing is read or
// written outside them (the address sanitizer would tell), and the count is
// kept as given.
TEST(CoefficientiOmogTest, EveryNodeMapsBackToItsGround)
{
    const int dimensioni[][4] = {{1, 1, -1, -1}, {2, 1, -1, -1}, {1, 5, -1, -1}, {7, 4, -1, -1},
                                 {maxQuadrati, maxQuadrati, -1, -1}, {maxQuadrati, maxQuadrati, 40, 1000}};
    unsigned seme = 11;
    for (const auto& dim : dimensioni) {
        for (int prova = 0; prova < 3; ++prova, ++seme) {
            CDigit d;
            const TNodi nodi = GrigliaScossa(dim[0], dim[1], 500, 60, seme);
            ASSERT_TRUE(CalibraDaNodi(d, nodi, dim[2], dim[3])) << "seed " << seme;
            ASSERT_EQ(A::StatoCalibr(d).load(), calibGriglia);
            ASSERT_TRUE(A::Indicizzato(d)) << "the fit indexes its cells";
            for (int p = 0; p <= dim[0]; ++p) {
                for (int q = 0; q <= dim[1]; ++q) {
                    double e = 0, n = 0;
                    ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(nodi[p][q].x, nodi[p][q].y, e, n));
                    EXPECT_NEAR(e, nodi[p][q].est, 1e-9) << "seed " << seme << " node " << p << "," << q;
                    EXPECT_NEAR(n, nodi[p][q].nord, 1e-9) << "seed " << seme << " node " << p << "," << q;
                }
            }
            EXPECT_EQ(A::NumQuadEst(d), dim[2] < 0 ? dim[0] : dim[2]);
        }
    }
}

}  // namespace
