// The linear solvers: Gauss-Jordan with full pivoting and least squares.
#include <gtest/gtest.h>

#include <ostream>

#include <cmath>
#include <string>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"

namespace {

using A = CDigitTestAccess;
using TRighe = std::vector<std::vector<double>>;

std::vector<double*> Puntatori(TRighe& righe)
{
    std::vector<double*> p;
    for (auto& r : righe) p.push_back(r.data());
    return p;
}

struct TSistema {
    const char* nome;
    TRighe a;
    std::vector<double> b;
    bool errore, xScritto;
    std::vector<double> x;  // 99 where x stays untouched
    TRighe inversa;         // when solved
    double tolleranza;
};
void PrintTo(const TSistema& p, std::ostream* os) { *os << p.nome; }

class SolGausJTest : public ::testing::TestWithParam<TSistema> {};

// Solved: x and the inverse. Singular: errore, and x written only when the
// last pass was reached. b is never changed, even when rows are exchanged.
TEST_P(SolGausJTest, SolvesOrFlagsTheSystem)
{
    TSistema c = GetParam();
    CDigit d;
    const int n = static_cast<int>(c.a.size());
    std::vector<double*> righe = Puntatori(c.a);
    std::vector<double> b = c.b, x(n, 99.0);
    bool errore = !c.errore;
    A::SolGausJ(d, righe.data(), b.data(), x.data(), n, errore);
    ASSERT_EQ(errore, c.errore);
    for (int i = 0; i < n; ++i) EXPECT_NEAR(x[i], c.xScritto ? c.x[i] : 99.0, c.tolleranza) << "x" << i;
    for (std::size_t i = 0; i < c.inversa.size(); ++i)
        for (int j = 0; j < n; ++j) EXPECT_NEAR(c.a[i][j], c.inversa[i][j], c.tolleranza) << i << "," << j;
    EXPECT_EQ(b, c.b);
}

INSTANTIATE_TEST_SUITE_P(
    Casi, SolGausJTest,
    ::testing::Values(
        TSistema{"treXtre", {{2, 1, 1}, {1, 3, 2}, {1, 0, 0}}, {4, 5, 6}, false, true, {6, 15, -23},
                 {{0, 0, 1}, {-2, 1, 3}, {3, -1, -5}}, 1e-12},
        // The equal 2 at row 1 does not displace the first one: rows exchange.
        TSistema{"pariMerito", {{1, 2}, {2, 1}}, {3, 3}, false, true, {1, 1},
                 {{-1.0 / 3, 2.0 / 3}, {2.0 / 3, -1.0 / 3}}, 1e-12},
        // Rows are divided by the pivot: 5/3 differs in its last bit from 5·(1/3).
        TSistema{"divisione", {{3}}, {5}, false, true, {5.0 / 3.0}, {{1.0 / 3.0}}, 0},
        // The second pass finds nothing above 0.0, reuses the pivot 4, and the
        // final check flags it: x is written.
        TSistema{"singolare", {{1, 2}, {2, 4}}, {1, 2}, true, true, {1, 2}, {}, 0},
        // Same with a tie in the first pass: the first 2 gives (1, 3), the
        // later one would give (2, 0.5).
        TSistema{"singolarePariMerito", {{2, 1}, {2, 1}}, {1, 3}, true, true, {1, 3}, {}, 0},
        // The pivot 9 serves twice and the third scan stops: x untouched.
        TSistema{"rangoUno", {{1, 2, 3}, {2, 4, 6}, {3, 6, 9}}, {1, 1, 1}, true, false, {}, {}, 0},
        // Nothing to pivot on in the first pass.
        TSistema{"nulla", {{0, 0}, {0, 0}}, {1, 1}, true, false, {}, {}, 0},
        TSistema{"soloNaN", {{NAN, NAN}, {NAN, NAN}}, {1, 1}, true, false, {}, {}, 0}),
    [](const ::testing::TestParamInfo<TSistema>& i) { return std::string(i.param.nome); });

// Least squares through the normal equations keeps its input; an empty
// system touches nothing, and one without rows has a zero normal matrix.
TEST(SolutoriTest, LeastSquaresAndEmptySystems)
{
    CDigit d;
    TRighe a = {{1, 0}, {1, 1}, {1, 2}};
    std::vector<double*> righe = Puntatori(a);
    const double b[3] = {1, 3, 4};
    double x[2] = {0, 0};
    bool errore = true;
    A::LeastSqareMatrix(d, righe.data(), b, x, 3, 2, errore);
    ASSERT_FALSE(errore);
    EXPECT_NEAR(x[0], 7.0 / 6.0, 1e-12);
    EXPECT_NEAR(x[1], 1.5, 1e-12);
    EXPECT_EQ(a, (TRighe{{1, 0}, {1, 1}, {1, 2}}));

    A::LeastSqareMatrix(d, nullptr, nullptr, x, 0, 2, errore);
    EXPECT_TRUE(errore);
    EXPECT_NEAR(x[0], 7.0 / 6.0, 1e-12);
    A::SolGausJ(d, nullptr, nullptr, nullptr, 0, errore);
    EXPECT_FALSE(errore);
}

}  // namespace
