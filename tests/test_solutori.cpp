// The linear solvers: Gauss-Jordan with full pivoting and least squares.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"
#include "support/matrice.h"

namespace {

using A = CDigitTestAccess;
constexpr double tolleranza = 1e-12;

void AttesaMatrice(TMatrice& a, const std::vector<std::vector<double>>& attesa)
{
    for (std::size_t i = 0; i < attesa.size(); ++i)
        for (std::size_t j = 0; j < attesa[i].size(); ++j)
            EXPECT_NEAR(a[i][j], attesa[i][j], tolleranza) << "element " << i << "," << j;
}

TEST(SolGausJTest, SolvesAndInvertsAThreeByThree)
{
    CDigit d;
    TMatrice a{{2, 1, 1}, {1, 3, 2}, {1, 0, 0}};
    double b[3] = {4, 5, 6};
    double x[3] = {0, 0, 0};
    bool errore = true;
    A::SolGausJ(d, a.Righe(), b, x, 3, errore);
    ASSERT_FALSE(errore);
    EXPECT_NEAR(x[0], 6, tolleranza);
    EXPECT_NEAR(x[1], 15, tolleranza);
    EXPECT_NEAR(x[2], -23, tolleranza);
    AttesaMatrice(a, {{0, 0, 1}, {-2, 1, 3}, {3, -1, -5}});
    EXPECT_EQ(b[0], 4);
    EXPECT_EQ(b[1], 5);
    EXPECT_EQ(b[2], 6);
}

// The equal 2 at row 1 does not displace the first 2 found: rows exchange,
// and b stays as it was.
TEST(SolGausJTest, EqualMagnitudesKeepTheFirstPivot)
{
    CDigit d;
    TMatrice a{{1, 2}, {2, 1}};
    double b[2] = {3, 3};
    double x[2] = {0, 0};
    bool errore = true;
    A::SolGausJ(d, a.Righe(), b, x, 2, errore);
    ASSERT_FALSE(errore);
    EXPECT_NEAR(x[0], 1, tolleranza);
    EXPECT_NEAR(x[1], 1, tolleranza);
    AttesaMatrice(a, {{-1.0 / 3, 2.0 / 3}, {2.0 / 3, -1.0 / 3}});
    EXPECT_EQ(b[0], 3);
    EXPECT_EQ(b[1], 3);
}

struct TSingolare {
    const char* nome;
    std::vector<std::vector<double>> a;
    std::vector<double> b;
    bool xScritto;
    std::vector<double> x;  // when written
};

class SingolareTest : public ::testing::TestWithParam<TSingolare> {};

// A singular system shows itself only through the pivot counts: either a scan
// meets a column used twice (x untouched) or the final check does (x written
// with what the elimination left).
TEST_P(SingolareTest, RaisesErroreAndWritesXOnlyAfterTheLastPass)
{
    const TSingolare& c = GetParam();
    CDigit d;
    const int n = static_cast<int>(c.a.size());
    std::vector<std::vector<double>> righe = c.a;
    std::vector<double*> puntatori;
    for (auto& r : righe) puntatori.push_back(r.data());
    std::vector<double> b = c.b;
    std::vector<double> x(n, 99.0);
    bool errore = false;
    A::SolGausJ(d, puntatori.data(), b.data(), x.data(), n, errore);
    EXPECT_TRUE(errore);
    if (c.xScritto)
        EXPECT_EQ(x, c.x);
    else
        EXPECT_EQ(x, std::vector<double>(n, 99.0)) << "x must stay untouched";
    EXPECT_EQ(b, c.b);
}

INSTANTIATE_TEST_SUITE_P(
    Casi, SingolareTest,
    ::testing::Values(
        // The second pass finds nothing above 0.0 and reuses the pivot 4.
        TSingolare{"dueXdue", {{1, 2}, {2, 4}}, {1, 2}, true, {1, 2}},
        // Same, but the first pass meets two equal magnitudes: with the first
        // 2 as pivot the written x is (1, 3); the later 2 would give (2, 0.5).
        TSingolare{"pariMerito", {{2, 1}, {2, 1}}, {1, 3}, true, {1, 3}},
        // The pivot 9 serves twice and the third scan stops.
        TSingolare{"rangoUno", {{1, 2, 3}, {2, 4, 6}, {3, 6, 9}}, {1, 1, 1}, false, {}},
        // Nothing to pivot on in the first pass.
        TSingolare{"nulla", {{0, 0}, {0, 0}}, {1, 1}, false, {}},
        TSingolare{"soloNaN", {{NAN, NAN}, {NAN, NAN}}, {1, 1}, false, {}}),
    [](const ::testing::TestParamInfo<TSingolare>& i) { return std::string(i.param.nome); });

TEST(SolGausJTest, EmptySystemTouchesNothing)
{
    CDigit d;
    bool errore = true;
    A::SolGausJ(d, nullptr, nullptr, nullptr, 0, errore);
    EXPECT_FALSE(errore);
}

// The row is divided by the pivot: 5/3 differs in its last bit from 5·(1/3).
TEST(SolGausJTest, DividesByThePivot)
{
    CDigit d;
    TMatrice a{{3}};
    double b[1] = {5};
    double x[1] = {0};
    bool errore = true;
    A::SolGausJ(d, a.Righe(), b, x, 1, errore);
    ASSERT_FALSE(errore);
    EXPECT_EQ(x[0], 5.0 / 3.0);
    EXPECT_EQ(a[0][0], 1.0 / 3.0);
}

TEST(LeastSqareMatrixTest, FitsThroughTheNormalEquationsAndKeepsItsInput)
{
    CDigit d;
    TMatrice a{{1, 0}, {1, 1}, {1, 2}};
    double b[3] = {1, 3, 4};
    double x[2] = {0, 0};
    bool errore = true;
    A::LeastSqareMatrix(d, a.Righe(), b, x, 3, 2, errore);
    ASSERT_FALSE(errore);
    EXPECT_NEAR(x[0], 7.0 / 6.0, tolleranza);
    EXPECT_NEAR(x[1], 1.5, tolleranza);
    AttesaMatrice(a, {{1, 0}, {1, 1}, {1, 2}});
    EXPECT_EQ(b[2], 4);
}

TEST(LeastSqareMatrixTest, NoRowsIsSingular)
{
    CDigit d;
    double x[2] = {99, 99};
    bool errore = false;
    A::LeastSqareMatrix(d, nullptr, nullptr, x, 0, 2, errore);
    EXPECT_TRUE(errore);
    EXPECT_EQ(x[0], 99);
}

}  // namespace
