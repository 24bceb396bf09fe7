// The cell index serves every point with the cell a scan of all cells gives.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"
#include "support/griglia_prova.h"

namespace {

using A = CDigitTestAccess;
using TLimiti = std::numeric_limits<std::int32_t>;

// Corners stored by the grid calibration's own step; every cell names itself (SegnaCelle).
void GrigliaSegnata(CDigit& d, const TNodi& nodi)
{
    CalibraDaNodi(d, nodi);
    SegnaCelle(d, static_cast<int>(nodi.size()) - 1, static_cast<int>(nodi[0].size()) - 1);
}

// Corners, reference points, their neighbours, points around, extreme counts: scan, then index.
void Confronta(CDigit& d, std::mt19937& gen, bool indicizzabile)
{
    std::vector<std::int64_t> px, py;
    for (int i = 0; i < A::NumQuadEst(d); ++i)
        for (int j = 0; j < A::NumQuadNord(d); ++j) {
            const std::int32_t *x = A::AngoliX(d)[i][j], *y = A::AngoliY(d)[i][j];
            for (int c = 0; c < 4; ++c) px.push_back(x[c]), py.push_back(y[c]);
            for (int k = 0; k < 9; ++k)
                px.push_back((std::int64_t{x[0]} + x[3]) / 2 + k % 3 - 1), py.push_back((std::int64_t{y[0]} + y[3]) / 2 + k / 3 - 1);
        }
    const auto [x0, x1] = std::minmax_element(px.begin(), px.end());
    const auto [y0, y1] = std::minmax_element(py.begin(), py.end());
    std::uniform_int_distribution<std::int64_t> rx(2 * *x0 - *x1 - 10, 2 * *x1 - *x0 + 10), ry(2 * *y0 - *y1 - 10, 2 * *y1 - *y0 + 10);
    for (int k = 0; k < 400; ++k) px.push_back(rx(gen)), py.push_back(ry(gen));
    for (std::int64_t e : {std::int64_t{TLimiti::min()}, std::int64_t{0}, std::int64_t{TLimiti::max()}})
        for (std::int64_t f : {std::int64_t{TLimiti::min()}, std::int64_t{TLimiti::max()}}) px.push_back(e), py.push_back(f);
    auto limita = [](std::int64_t v) { return static_cast<std::int32_t>(std::clamp<std::int64_t>(v, TLimiti::min(), TLimiti::max())); };

    ASSERT_FALSE(A::Indicizzato(d));
    std::vector<double> attesi(px.size());
    double nord = 0;
    for (std::size_t k = 0; k < px.size(); ++k)
        ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(limita(px[k]), limita(py[k]), attesi[k], nord));
    A::IndicizzaCelle(d);
    ASSERT_EQ(A::Indicizzato(d), indicizzabile);
    for (std::size_t k = 0; k < px.size(); ++k) {
        double est = 0;
        ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(limita(px[k]), limita(py[k]), est, nord));
        ASSERT_EQ(est, attesi[k]) << "point " << limita(px[k]) << "," << limita(py[k]);
    }
}

// Well-shaped, twisted and mirrored random grids; square lattices (each inner
// node a four-way tie); a triangle collapsed to a point, which holds all and
// so is not indexed.

TEST(IndiceCelleTest, EveryGridGetsTheScannedCell)
{
    std::mt19937 gen(2024);
    std::vector<TNodi> griglie;
    for (int prova = 0; prova < 24; ++prova) {
        const int quadEst = 1 + static_cast<int>(gen() % maxQuadrati), quadNord = 1 + static_cast<int>(gen() % maxQuadrati);
        griglie.push_back(GrigliaScossa(quadEst, quadNord, 300, prova % 3 == 0 ? 400 : 50, gen()));
        if (prova % 4 == 1)
            for (auto& colonna : griglie.back())
                for (TNodo& n : colonna) n.x = -n.x;
    }
    for (int verso : {1, -1}) {
        griglie.emplace_back(9, std::vector<TNodo>(8));
        for (int p = 0; p <= 8; ++p)
            for (int q = 0; q <= 7; ++q) griglie.back()[p][q] = {verso * p * 300, q * 300, 0.0, 0.0};
    }
    griglie.push_back(GrigliaScossa(4, 3, 300, 20, 9));
    griglie.back()[3][1] = griglie.back()[3][2] = griglie.back()[2][2] = TNodo{4000, 4000, 0.0, 0.0};
    for (std::size_t k = 0; k < griglie.size(); ++k) {
        SCOPED_TRACE(k);
        CDigit d;
        GrigliaSegnata(d, griglie[k]);
        Confronta(d, gen, k + 1 < griglie.size());
    }
}

}  // namespace
