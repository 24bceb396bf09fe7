// The calibration report against the same figures computed another way: the
// least-squares map from the uncentred normal equations, solved in long
// double, and the leave-one-out residuals from the leverage.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "calibration/rapporto_calibrazione.h"

namespace {

using TPunti = std::vector<TPuntoControllo>;
using L = long double;

// The inverse of the normal matrix of the design [1 x y], by Gauss-Jordan
// in long double.
std::array<std::array<L, 3>, 3> InversaNormale(const TPunti& p)
{
    L a[3][6] = {};
    for (const TPuntoControllo& q : p) {
        const L r[3] = {1, L(q.x), L(q.y)};
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) a[i][j] += r[i] * r[j];
    }
    for (int i = 0; i < 3; ++i) a[i][3 + i] = 1;
    for (int c = 0; c < 3; ++c) {
        int perno = c;
        for (int i = c + 1; i < 3; ++i)
            if (std::fabs(a[i][c]) > std::fabs(a[perno][c])) perno = i;
        for (int j = 0; j < 6; ++j) std::swap(a[c][j], a[perno][j]);
        for (int i = 0; i < 3; ++i) {
            if (i == c) continue;
            const L f = a[i][c] / a[c][c];
            for (int j = 0; j < 6; ++j) a[i][j] -= f * a[c][j];
        }
    }
    std::array<std::array<L, 3>, 3> inv{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) inv[i][j] = a[i][3 + j] / a[i][i];
    return inv;
}

struct TAttesa {
    std::vector<L> dE, dN, looE, looN;
    L rms = 0, sigma = 0, leva = 0;  // leva: the largest over the zone's corners
};

// The residuals of the uncentred normal equations, and the leave-one-out
// ones from the leverage h of each point: r / (1 - h), no fit left out.
TAttesa Attesa(const TPunti& p, const TLimiti& zona)
{
    const auto inv = InversaNormale(p);
    L be[3] = {}, bn[3] = {};
    for (const TPuntoControllo& q : p) {
        const L r[3] = {1, L(q.x), L(q.y)};
        for (int i = 0; i < 3; ++i) be[i] += r[i] * q.est, bn[i] += r[i] * q.nord;
    }
    // The map at (x, y): East, North and the leverage there.
    auto Mappa = [&](L x, L y) {
        const L r[3] = {1, x, y};
        std::array<L, 3> m{};
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                m[0] += r[i] * inv[i][j] * be[j], m[1] += r[i] * inv[i][j] * bn[j], m[2] += r[i] * inv[i][j] * r[j];
        return m;
    };
    TAttesa a;
    for (const TPuntoControllo& q : p) {
        const auto m = Mappa(q.x, q.y);
        const L e = q.est - m[0], n = q.nord - m[1];
        a.dE.push_back(e), a.dN.push_back(n), a.looE.push_back(e / (1 - m[2])), a.looN.push_back(n / (1 - m[2]));
        a.rms += e * e + n * n;
    }
    a.sigma = std::sqrt(a.rms / (2 * p.size() - 6));
    a.rms = std::sqrt(a.rms / p.size());
    for (double x : {zona.x1, zona.x2})
        for (double y : {zona.y1, zona.y2}) a.leva = std::max(a.leva, Mappa(x, y)[2]);
    return a;
}

// Points of East 1520000 + 0.1 x + 0.002 y, North 5030000 - 0.001 x + 0.1 y
// (UTM-sized), with the given errors added to East and North.
TPunti Punti(const std::vector<std::array<std::int32_t, 2>>& xy, const std::vector<std::array<double, 2>>& errori)
{
    TPunti p;
    for (std::size_t k = 0; k < xy.size(); ++k) {
        const double x = xy[k][0], y = xy[k][1];
        p.push_back({xy[k][0], xy[k][1], 1520000 + 0.1 * x + 0.002 * y + errori[k][0],
                     5030000 - 0.001 * x + 0.1 * y + errori[k][1]});
    }
    return p;
}

const TLimiti limiti{true, 0, 0, 40000, 30000};

TEST(RapportoCalibrazione, SparseFiguresAgreeWithLongDoubleAtUtmCoordinates)
{
    const TPunti p = Punti({{1000, 1200}, {39000, 800}, {38500, 29000}, {1500, 28500}, {20000, 15000}, {9000, 21000}, {30000, 7000}},
                           {{0.03, -0.02}, {-0.05, 0.01}, {0.02, 0.04}, {0.01, -0.03}, {-0.04, 0.02}, {0.05, 0.0}, {-0.02, -0.02}});
    TRapportoCalibrazione r;
    ASSERT_TRUE(RapportoSparsi(p, limiti, r));
    const TAttesa a = Attesa(p, limiti);
    ASSERT_EQ(r.punti.size(), p.size());
    constexpr double tol = 1e-8;  // metres, at coordinates of 5e6
    for (std::size_t k = 0; k < p.size(); ++k) {
        SCOPED_TRACE(k);
        EXPECT_NEAR(r.punti[k].residuoEst, double(a.dE[k]), tol);
        EXPECT_NEAR(r.punti[k].residuoNord, double(a.dN[k]), tol);
        EXPECT_NEAR(r.punti[k].lasciaFuoriEst, double(a.looE[k]), tol);
        EXPECT_NEAR(r.punti[k].lasciaFuoriNord, double(a.looN[k]), tol);
    }
    EXPECT_NEAR(r.rms, double(a.rms), tol);
    EXPECT_NEAR(r.deviazione, double(a.sigma), tol);
    EXPECT_NEAR(r.peggiorePrevisto, double(a.sigma * std::sqrt(2 * a.leva)), tol);
    std::vector<double> lunghezze;
    for (std::size_t k = 0; k < p.size(); ++k) lunghezze.push_back(double(std::hypot(a.dE[k], a.dN[k])));
    std::vector<double> ordinate = lunghezze;
    std::sort(ordinate.rbegin(), ordinate.rend());
    EXPECT_EQ(lunghezze[r.peggiori[0]], ordinate[0]);
    EXPECT_EQ(lunghezze[r.peggiori[1]], ordinate[1]);
    EXPECT_EQ(r.avvisi, 0u);
}

// Each warning, and only it, for the set that earns it.
TEST(RapportoCalibrazione, WarningsFollowTheirThresholds)
{
    const std::vector<std::array<double, 2>> piccoli(8, {0.0, 0.0});
    std::vector<std::array<double, 2>> errori = {{0.02, -0.01}, {-0.03, 0.02}, {0.01, 0.03}, {-0.02, -0.02},
                                                 {0.03, 0.01}, {0.0, -0.03}, {-0.01, 0.0}, {0.02, 0.02}};
    const std::vector<std::array<std::int32_t, 2>> sparsi = {{1000, 1000}, {39000, 1000}, {39000, 29000}, {1000, 29000},
                                                             {20000, 15000}, {10000, 22000}, {30000, 8000}, {25000, 26000}};
    auto bloccoErrato = errori, ovest = errori;
    bloccoErrato[5][0] += 5;  // a point pressed 5 m off
    ovest[5][0] -= 0.24;  // 24 cm west: 3.2 times the median of eight, 2.9 times its upper middle
    // Six points, the last 9 cm off: its leave-one-out length is 3.3 times
    // the median of the six (the mean of the middle two), 2.6 times the
    // upper of them.
    const std::vector<std::array<std::int32_t, 2>> sei(sparsi.begin(), sparsi.begin() + 6);
    const std::vector<std::array<double, 2>> noveCentimetri = {{0.03, -0.01}, {-0.01, -0.02}, {0.0, 0.02},
                                                               {-0.02, 0.02}, {0.01, -0.02}, {0.10, 0.02}};
    auto setteCentimetri = noveCentimetri;  // 2.5 times the median: no blunder
    setteCentimetri[5][0] = 0.07;
    const struct {
        const char* caso;
        TPunti punti;
        unsigned avvisi;
    } casi[] = {
        {"spread, redundant", Punti(sparsi, errori), 0},
        {"a blunder", Punti(sparsi, bloccoErrato), avvisoGrossolano},
        {"a blunder against the median of an even count", Punti(sei, noveCentimetri), avvisoGrossolano},
        {"no blunder against the median of an even count", Punti(sei, setteCentimetri), 0},
        {"a blunder against the median of eight", Punti(sparsi, ovest), avvisoGrossolano},
        {"three points", Punti({{1000, 1000}, {39000, 1000}, {1000, 29000}}, piccoli), avvisoSenzaRidondanza},
        {"in a corner", Punti({{1000, 1000}, {9000, 1000}, {9000, 7000}, {1000, 7000}, {5000, 3000}}, errori),
         avvisoRaggruppati},
        {"nearly in a line", Punti({{1000, 1000}, {13000, 10100}, {26000, 20000}, {39000, 29500}}, errori),
         avvisoAllineati},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        TRapportoCalibrazione r;
        ASSERT_TRUE(RapportoSparsi(c.punti, limiti, r));
        EXPECT_EQ(r.avvisi, c.avvisi);
        if (c.avvisi == avvisoGrossolano) {
            EXPECT_EQ(r.peggiori[0], 5);
        }
        if (c.avvisi == avvisoSenzaRidondanza) {
            EXPECT_TRUE(std::isnan(r.deviazione) && std::isnan(r.peggiorePrevisto));
            EXPECT_TRUE(std::isnan(r.punti[0].lasciaFuoriEst));
        }
    }
    // Five points tell a blunder; four are too few to tell it.
    for (std::ptrdiff_t n : {4, 5}) {
        TRapportoCalibrazione r;
        ASSERT_TRUE(RapportoSparsi(Punti({sparsi.begin() + 6 - n, sparsi.begin() + 6},
                                         {bloccoErrato.begin() + 6 - n, bloccoErrato.begin() + 6}), limiti, r));
        EXPECT_EQ(r.avvisi, n == 5 ? avvisoGrossolano : 0u) << n << " points";
    }
    TRapportoCalibrazione r;
    EXPECT_FALSE(RapportoSparsi(Punti({{0, 0}, {100, 100}, {200, 200}, {300, 300}}, piccoli), limiti, r));
    EXPECT_EQ(r.tipo, TRapportoCalibrazione::nessuna);
    // The corners of a strip 0.19 as high as wide: spreads of 19 to 100, and
    // a quarter of the sheet and more: no warning.
    ASSERT_TRUE(RapportoSparsi(Punti({{0, 0}, {40000, 0}, {40000, 7600}, {0, 7600}}, piccoli), limiti, r));
    EXPECT_NEAR(r.allineamento, 0.19, 1e-12);
    EXPECT_EQ(r.avvisi, 0u);
}

// A 3 by 2 grid of 1000-count squares, a little sheared; node `fuori` (5:
// East 1, North 1) pressed `spostamento` counts off along x.
TPunti Griglia(int spostamento, int fuori = 5)
{
    TPunti nodi;
    for (int j = 0; j <= 2; ++j)
        for (int i = 0; i <= 3; ++i)
            nodi.push_back({1000 * i + 20 * j + (j * 4 + i == fuori ? spostamento : 0), 1000 * j,
                            500000 + 100.0 * i, 4000000 + 100.0 * j});
    return nodi;
}

// Out of place beyond 0.2 of a spacing: from its neighbours' midpoint or, for
// the corner node 0, from the line through the next two.
TEST(RapportoCalibrazione, AGridNodeOutOfPlaceIsNamedAndResidualsAgree)
{
    using P = std::pair<int, int>;
    for (const auto& [spostamento, fuori] : {P{0, 5}, P{300, 5}, P{300, 0}, P{150, 0}, P{150, 5}}) {
        SCOPED_TRACE(testing::Message() << spostamento << " at " << fuori);
        const TPunti nodi = Griglia(spostamento, fuori);
        TRapportoCalibrazione r;
        ASSERT_TRUE(RapportoGriglia(nodi, 3, 2, limiti, r));
        EXPECT_EQ(r.tipo, TRapportoCalibrazione::griglia);
        EXPECT_TRUE(std::isnan(r.peggiorePrevisto));
        const bool oltre = spostamento > 200;
        EXPECT_EQ(r.nodiFuoriPosto, oltre ? std::vector<int>{fuori} : std::vector<int>{});
        EXPECT_EQ(r.avvisi, oltre ? avvisoNodoFuoriPosto : 0u);
        const TAttesa a = Attesa(nodi, limiti);
        for (std::size_t k = 0; k < nodi.size(); ++k) {
            EXPECT_NEAR(r.punti[k].residuoEst, double(a.dE[k]), 1e-9);
            EXPECT_NEAR(r.punti[k].lasciaFuoriNord, double(a.looN[k]), 1e-9);
        }
    }
    TRapportoCalibrazione r;
    EXPECT_FALSE(RapportoGriglia(Griglia(0), 2, 2, limiti, r)) << "12 nodes are no 2 by 2 grid";
    // A sheet laid on the tablet turned by a tenth of a radian: every node,
    // those on the edges and corners too, is where its neighbours put it.
    TPunti ruotata = Griglia(0);
    for (TPuntoControllo& n : ruotata) {
        const double x = n.x, y = n.y;
        n.x = static_cast<std::int32_t>(std::lround(x * std::cos(0.1) - y * std::sin(0.1)));
        n.y = static_cast<std::int32_t>(std::lround(x * std::sin(0.1) + y * std::cos(0.1)));
    }
    ASSERT_TRUE(RapportoGriglia(ruotata, 3, 2, limiti, r));
    EXPECT_EQ(r.nodiFuoriPosto, std::vector<int>{});
}

}  // namespace
