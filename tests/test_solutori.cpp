// Gauss-Jordan with full pivoting (least squares is checked through the
// sparse-point fit).
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"

namespace {

using TRighe = std::vector<std::vector<double>>;

// Solved: x and the inverse in place of a. Singular: errore, and x written
// only when the last pass was reached. b is never changed, even when rows
// are exchanged.
TEST(SolGausJTest, SolvesOrFlagsTheSystem)
{
    struct TSistema {
        const char* nome;
        TRighe a;
        std::vector<double> b;
        bool errore, xScritto;
        std::vector<double> x;  // when written
        TRighe inversa;         // when solved
        double tolleranza;
    };
    const TSistema casi[] = {
        {"3 by 3", {{2, 1, 1}, {1, 3, 2}, {1, 0, 0}}, {4, 5, 6}, false, true, {6, 15, -23},
         {{0, 0, 1}, {-2, 1, 3}, {3, -1, -5}}, 1e-12},
        // The equal 2 at row 1 does not displace the first one: rows exchange.
        {"tie", {{1, 2}, {2, 1}}, {3, 3}, false, true, {1, 1}, {{-1.0 / 3, 2.0 / 3}, {2.0 / 3, -1.0 / 3}}, 1e-12},
        // Rows are divided by the pivot: 5/3 differs in its last bit from 5·(1/3).
        {"division", {{3}}, {5}, false, true, {5.0 / 3.0}, {{1.0 / 3.0}}, 0},
        // The second pass finds nothing above 0.0, reuses the pivot 4, and the
        // final check flags it: x is written.
        {"singular", {{1, 2}, {2, 4}}, {1, 2}, true, true, {1, 2}, {}, 0},
        // Same with a tie in the first pass: the first 2 gives (1, 3), the
        // later one would give (2, 0.5).
        {"singular tie", {{2, 1}, {2, 1}}, {1, 3}, true, true, {1, 3}, {}, 0},
        // The pivot 9 serves twice and the third scan stops: x untouched.
        {"rank one", {{1, 2, 3}, {2, 4, 6}, {3, 6, 9}}, {1, 1, 1}, true, false, {}, {}, 0},
        {"zero", {{0, 0}, {0, 0}}, {1, 1}, true, false, {}, {}, 0},
        {"NaN", {{NAN, NAN}, {NAN, NAN}}, {1, 1}, true, false, {}, {}, 0},
    };
    for (TSistema c : casi) {
        SCOPED_TRACE(c.nome);
        CDigit d;
        const int n = static_cast<int>(c.a.size());
        std::vector<double*> righe;
        for (auto& r : c.a) righe.push_back(r.data());
        std::vector<double> b = c.b, x(n, 99.0);
        bool errore = !c.errore;
        CDigitTestAccess::SolGausJ(d, righe.data(), b.data(), x.data(), n, errore);
        ASSERT_EQ(errore, c.errore);
        for (int i = 0; i < n; ++i) EXPECT_NEAR(x[i], c.xScritto ? c.x[i] : 99.0, c.tolleranza) << "x" << i;
        for (std::size_t i = 0; i < c.inversa.size(); ++i)
            for (int j = 0; j < n; ++j) EXPECT_NEAR(c.a[i][j], c.inversa[i][j], c.tolleranza) << i << "," << j;
        EXPECT_EQ(b, c.b);
    }
}

}  // namespace
