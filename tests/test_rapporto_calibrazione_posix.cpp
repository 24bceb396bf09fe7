// The calibration report's figures on cases worked by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "rapporto_calibrazione.h"
#include "support/digit_accesso.h"

namespace {

// A tablet of limits 0..40000 calibrated on the points by the library.
void Calibra(CDigit& digit, const std::vector<TPuntoControllo>& p)
{
    TDataDigit d = digit.GetDataDigit();
    d.tipo = 5, d.limitiDefiniti = true, d.xMin = d.yMin = 0, d.xMax = d.yMax = 40000;
    digit.SetDataDigit(d);
    std::vector<double> x, y, e, n;
    for (const auto& q : p) x.push_back(q.x), y.push_back(q.y), e.push_back(q.est), n.push_back(q.nord);
    ASSERT_TRUE(CDigitTestAccess::CalcoloCoefficientiPtSparsi(digit, x.data(), y.data(), e.data(), n.data(),
                                                               static_cast<int>(p.size())));
}

// Control points of the map East = 1500000 + 0.05 x, North = 5000000 +
// 0.04 y (a scale of 0.05 at most), East off by the given errors.
std::vector<TPuntoControllo> Punti(const std::vector<std::array<std::int32_t, 2>>& xy,
                                   const std::vector<double>& errori = {})
{
    std::vector<TPuntoControllo> p;
    for (std::size_t k = 0; k < xy.size(); ++k)
        p.push_back({1500000 + 0.05 * xy[k][0] + (k < errori.size() ? errori[k] : 0), 5000000 + 0.04 * xy[k][1],
                     xy[k][0], xy[k][1]});
    return p;
}

// The corners of a square and its centre, the corners' East off by +d, -d,
// -d, +d: errors no plane takes up, so the fit is the map itself. Worked by
// hand, in units of half the square's side centred on it: a corner left out
// is missed by 10d/3 (the plane through the other four is -2d/3 + 5d/6 (u +
// v)), and each point's weight at a corner of the sheet, (-1.25, -1.25) and
// its mirrors, is 1/5 + (u u' + v v') / 4, whose sizes sum to 1.85.
TEST(RapportoPunti, FiguresOfAFitWorkedByHand)
{
    const double d = 0.3;
    const std::vector<double> errori = {d, -d, -d, d, 0};
    const auto p = Punti({{{4000, 4000}}, {{36000, 4000}}, {{4000, 36000}}, {{36000, 36000}}, {{20000, 20000}}}, errori);
    CDigit digit;
    Calibra(digit, p);
    TRapportoPunti r;
    ASSERT_TRUE(RapportoPunti(digit, p, r));
    EXPECT_TRUE(r.concorda);
    ASSERT_EQ(r.lasciaFuori.size(), 5u);
    for (std::size_t k = 0; k < 5; ++k) {
        EXPECT_NEAR(r.residui[k].est, -errori[k], 1e-6) << "point " << k + 1;
        EXPECT_NEAR(r.residui[k].nord, 0, 1e-6) << "point " << k + 1;
        EXPECT_NEAR(r.lasciaFuori[k], k < 4 ? 10 * d / 3 : 0, 1e-6) << "point " << k + 1;
    }
    EXPECT_NEAR(r.rms, 2 * d / std::sqrt(5.0), 1e-6);
    EXPECT_NEAR(r.deviazione, d, 1e-6);  // over 2 (5 - 3) degrees of freedom
    EXPECT_EQ(r.peggiori[0], 1) << "the worst first, the first of equals";
    EXPECT_EQ(r.peggiori[1], 2);
    EXPECT_NEAR(r.fattore, 1.85, 1e-9);
    EXPECT_NEAR(r.peggiorePrevisto, erroreDigitalizzazione * 0.05 * 1.85, 1e-9);
    EXPECT_TRUE(r.avvisi.empty()) << Testo(r);
}

// Points crowded in a corner, or nearly in a line, are warned of; three
// points leave no deviation and nothing to leave out.
TEST(RapportoPunti, CrowdedOrAlignedPointsAreWarnedOf)
{
    const std::vector<std::array<std::int32_t, 2>> casi[] = {
        {{{2000, 2000}}, {{2500, 2000}}, {{2000, 2500}}},
        {{{2000, 2000}}, {{14000, 14100}}, {{26000, 25900}}, {{38000, 38000}}}};
    for (const auto& xy : casi) {
        const auto p = Punti(xy);
        CDigit digit;
        Calibra(digit, p);
        TRapportoPunti r;
        ASSERT_TRUE(RapportoPunti(digit, p, r));
        EXPECT_NE(Testo(r).find("spread the points over the whole sheet"), std::string::npos) << Testo(r);
        EXPECT_EQ(r.lasciaFuori.empty(), p.size() == 3);
        EXPECT_EQ(std::isnan(r.deviazione), p.size() == 3);
        EXPECT_EQ(Json(r).find("\"standard_deviation\": null") != std::string::npos, p.size() == 3);
    }
}

// Nodes of a 2 by 2 grid of 100 ground units, at 2000 counts a square,
// turned by 30 degrees on the tablet.
std::vector<TPuntoControllo> Nodi(const TParametriGriglia& g)
{
    std::vector<TPuntoControllo> v;
    const double c = std::cos(M_PI / 6), s = std::sin(M_PI / 6);
    for (int i = 0; i <= g.numQuadEst; ++i)
        for (int j = 0; j <= g.numQuadNord; ++j)
            v.push_back({i * g.passoEst + g.iniEst, j * g.passoNord + g.iniNord,
                         static_cast<std::int32_t>(std::lround(10000 + 2000 * (c * i - s * j))),
                         static_cast<std::int32_t>(std::lround(10000 + 2000 * (s * i + c * j)))});
    return v;
}

TEST(RapportoGriglia, ScalesRotationsAndSpoiledCells)
{
    const TParametriGriglia g{2, 2, 1000, 2000, 100, 100};
    std::vector<TPuntoControllo> nodi = Nodi(g);
    TRapportoGriglia r;
    ASSERT_TRUE(RapportoGriglia(nodi, g, r));
    EXPECT_EQ(r.celle.size(), 4u);
    EXPECT_NEAR(r.scalaMin, 0.05, 1e-4);
    EXPECT_NEAR(r.scalaMax, 0.05, 1e-4);
    EXPECT_NEAR(r.rotazioneMin, 30, 0.05);
    EXPECT_NEAR(r.rotazioneMax, 30, 0.05);
    EXPECT_TRUE(r.avvisi.empty());

    // The middle node pushed past its neighbour folds all four cells.
    nodi[4].x += 5000;
    ASSERT_TRUE(RapportoGriglia(nodi, g, r));
    EXPECT_NE(Testo(r).find("WARNING: cell 0,0 is folded"), std::string::npos) << Testo(r);

    // A grid laid mirrored on the tablet turns its cells the other way.
    nodi = Nodi(g);
    for (auto& q : nodi) q.x = 20000 - q.x;
    ASSERT_TRUE(RapportoGriglia(nodi, g, r));
    EXPECT_EQ(r.avvisi.size(), 4u);
    EXPECT_NE(Testo(r).find("is inverted"), std::string::npos);

    nodi.pop_back();
    EXPECT_FALSE(RapportoGriglia(nodi, g, r)) << "a node short";
}

}  // namespace
