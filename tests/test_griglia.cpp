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

}  // namespace
