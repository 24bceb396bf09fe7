// Where the host's simulated tablet digitizes calibration points: in a grid
// calibration at the node asked for, and in a sparse one so that the first
// three points already give an affine map.
#include <gtest/gtest.h>

#include <cstdint>

#include "collegamento.h"

namespace {

TEST(PuntoSimulato, GrigliaInOrdineEPuntiSparsiNonAllineati)
{
    // East along x, as the grid asks its nodes: North varies fastest.
    const std::int32_t nodi[9][2] = {{2000, 2000}, {2000, 5000}, {2000, 8000}, {5000, 2000}, {5000, 5000},
                                     {5000, 8000}, {8000, 2000}, {8000, 5000}, {8000, 8000}};
    for (int n = 0; n < 9; ++n) {
        const TPuntoSimulato p = PuntoSimulato(n, true);
        EXPECT_EQ(p.x, nodi[n][0]) << "node " << n;
        EXPECT_EQ(p.y, nodi[n][1]) << "node " << n;
    }
    const TPuntoSimulato a = PuntoSimulato(0, false), b = PuntoSimulato(1, false), c = PuntoSimulato(2, false);
    const std::int64_t area2 = std::int64_t{b.x - a.x} * (c.y - a.y) - std::int64_t{b.y - a.y} * (c.x - a.x);
    EXPECT_NE(area2, 0) << "three sparse points in a line give no affine map";
}

}  // namespace
