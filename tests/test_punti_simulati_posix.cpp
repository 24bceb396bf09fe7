// Where the host's simulated tablet digitizes calibration points: in a grid
// calibration at the node asked for, and in a sparse one so that the first
// three points already give an affine map.
#include <gtest/gtest.h>

#include <cstdint>

#include "collegamento.h"

namespace {

TEST(PuntoSimulato, GrigliaInOrdineEPuntiSparsiNonAllineati)
{
    for (int n = 0; n < 9; ++n) {
        const TPuntoSimulato p = PuntoSimulato(n, true);
        EXPECT_EQ(p.x, 2000 + (n / 3) * 3000) << "node " << n << ", East along x as the grid asks";
        EXPECT_EQ(p.y, 2000 + (n % 3) * 3000) << "node " << n;
    }
    const TPuntoSimulato a = PuntoSimulato(0, false), b = PuntoSimulato(1, false), c = PuntoSimulato(2, false);
    const std::int64_t area2 = std::int64_t{b.x - a.x} * (c.y - a.y) - std::int64_t{b.y - a.y} * (c.x - a.x);
    EXPECT_NE(area2, 0) << "three sparse points in a line give no affine map";
}

}  // namespace
