// The calibration report against a computation of the test's own: a least
// squares by the plain normal equations and Cramer's rule, refits for the
// leave-one-out errors and for the weights of the points, and the map's
// largest scale found by turning a unit vector round.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "rapporto_calibrazione.h"
#include "support/digit_accesso.h"

namespace {

struct TMappa {
    double e[3], n[3];  // constant, factor of x, factor of y
    double Est(double x, double y) const { return e[0] + e[1] * x + e[2] * y; }
    double Nord(double x, double y) const { return n[0] + n[1] * x + n[2] * y; }
};

double Det(const double m[3][3])
{
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

// Least squares of `valori` on (1, x, y) over the points but `escluso`;
// counts and values are taken from those of the last point, so that the
// normal equations keep their digits.
void Minimi(const std::vector<TPuntoControllo>& p, const std::vector<double>& valori, int escluso, double c[3])
{
    const double x0 = p.back().x, y0 = p.back().y, v0 = valori.back();
    double m[3][3] = {}, b[3] = {};
    for (std::size_t k = 0; k < p.size(); ++k) {
        if (static_cast<int>(k) == escluso) continue;
        const double r[3] = {1, p[k].x - x0, p[k].y - y0};
        for (int i = 0; i < 3; ++i) {
            b[i] += r[i] * (valori[k] - v0);
            for (int j = 0; j < 3; ++j) m[i][j] += r[i] * r[j];
        }
    }
    const double d = Det(m);
    for (int col = 0; col < 3; ++col) {
        double mc[3][3];
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) mc[i][j] = j == col ? b[i] : m[i][j];
        c[col] = Det(mc) / d;
    }
    c[0] += v0 - c[1] * x0 - c[2] * y0;
}

TMappa Adatta(const std::vector<TPuntoControllo>& p, int escluso = -1)
{
    std::vector<double> est, nord;
    for (const auto& q : p) est.push_back(q.est), nord.push_back(q.nord);
    TMappa m;
    Minimi(p, est, escluso, m.e);
    Minimi(p, nord, escluso, m.n);
    return m;
}

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

// The points of East = 1500000 + 0.03 x - 0.04 y, North = 5000000 + 0.04 x
// + 0.03 y (0.05 ground units a count, turned), with ground errors added.
std::vector<TPuntoControllo> Punti(const std::vector<std::array<double, 4>>& v)
{
    std::vector<TPuntoControllo> p;
    for (const auto& q : v)
        p.push_back({1500000 + 0.03 * q[0] - 0.04 * q[1] + q[2], 5000000 + 0.04 * q[0] + 0.03 * q[1] + q[3],
                     static_cast<std::int32_t>(q[0]), static_cast<std::int32_t>(q[1])});
    return p;
}

struct TCaso {
    const char* nome;
    std::vector<std::array<double, 4>> punti;  // x, y, error East, error North
    bool avviso;
};

void PrintTo(const TCaso& c, std::ostream* os) { *os << c.nome; }

class RapportoPuntiTest : public ::testing::TestWithParam<TCaso> {};

TEST_P(RapportoPuntiTest, FiguresAreThoseOfAnIndependentComputation)
{
    const std::vector<TPuntoControllo> p = Punti(GetParam().punti);
    CDigit digit;
    Calibra(digit, p);
    TRapportoPunti r;
    ASSERT_TRUE(RapportoPunti(digit, p, r));
    EXPECT_TRUE(r.concorda);

    const TMappa m = Adatta(p);
    const int n = static_cast<int>(p.size());
    double somma = 0;
    std::vector<double> lunghezze;
    for (int k = 0; k < n; ++k) {
        const double de = m.Est(p[k].x, p[k].y) - p[k].est, dn = m.Nord(p[k].x, p[k].y) - p[k].nord;
        EXPECT_NEAR(r.residui[k].est, de, 1e-6) << "point " << k + 1;
        EXPECT_NEAR(r.residui[k].nord, dn, 1e-6) << "point " << k + 1;
        somma += de * de + dn * dn;
        lunghezze.push_back(std::hypot(de, dn));
        if (n >= 4) {
            const TMappa senza = Adatta(p, k);
            EXPECT_NEAR(r.lasciaFuori.at(k),
                        std::hypot(senza.Est(p[k].x, p[k].y) - p[k].est, senza.Nord(p[k].x, p[k].y) - p[k].nord), 1e-6);
        }
    }
    EXPECT_EQ(r.lasciaFuori.empty(), n < 4);
    EXPECT_NEAR(r.rms, std::sqrt(somma / n), 1e-6);
    if (n > 3) EXPECT_NEAR(r.deviazione, std::sqrt(somma / (2.0 * (n - 3))), 1e-6);
    else EXPECT_TRUE(std::isnan(r.deviazione));
    EXPECT_NEAR(lunghezze[r.peggiori[0] - 1], *std::max_element(lunghezze.begin(), lunghezze.end()), 1e-9);
    EXPECT_GE(lunghezze[r.peggiori[0] - 1] + 1e-9, lunghezze[r.peggiori[1] - 1]);
    EXPECT_NE(r.peggiori[0], r.peggiori[1]);

    // The weight of point k at a place is the fit of data 1 at k, 0 elsewhere.
    double fattore = 0;
    const double angoli[4][2] = {{0, 0}, {0, 40000}, {40000, 0}, {40000, 40000}};
    for (const auto& c : angoli) {
        double s = 0;
        for (int k = 0; k < n; ++k) {
            std::vector<double> uno(p.size(), 0.0);
            uno[k] = 1;
            double w[3];
            Minimi(p, uno, -1, w);
            s += std::fabs(w[0] + w[1] * c[0] + w[2] * c[1]);
        }
        fattore = std::max(fattore, s);
    }
    double scala = 0;
    for (int g = 0; g < 36000; ++g) {
        const double ux = std::cos(g * M_PI / 18000), uy = std::sin(g * M_PI / 18000);
        scala = std::max(scala, std::hypot(m.e[1] * ux + m.e[2] * uy, m.n[1] * ux + m.n[2] * uy));
    }
    EXPECT_NEAR(r.fattore, fattore, 1e-6 * fattore);
    EXPECT_NEAR(r.peggiorePrevisto, erroreDigitalizzazione * scala * fattore, 1e-5 * r.peggiorePrevisto);
    EXPECT_EQ(!r.avvisi.empty(), GetParam().avviso) << Testo(r);
    if (GetParam().avviso) {
        EXPECT_NE(Testo(r).find("spread the points over the whole sheet"), std::string::npos) << Testo(r);
    }
    if (n == 3) {
        EXPECT_NE(Json(r).find("\"standard_deviation\": null"), std::string::npos);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Casi, RapportoPuntiTest,
    ::testing::Values(
        TCaso{"esatti", {{4000, 4000, 0, 0}, {36000, 4000, 0, 0}, {4000, 36000, 0, 0}, {36000, 36000, 0, 0}}, false},
        TCaso{"rumorosi",
              {{3000, 5000, 0.2, -0.1}, {37000, 4000, -0.3, 0.05}, {5000, 35000, 0.1, 0.25}, {36000, 37000, -0.05, -0.2},
               {20000, 21000, 0.4, 0.1}, {12000, 28000, -0.15, -0.3}},
              false},
        // Three points within 500 counts on a 40000-count sheet: metres off across it.
        TCaso{"raccolti", {{2000, 2000, 0, 0}, {2500, 2000, 0, 0}, {2000, 2500, 0, 0}}, true},
        TCaso{"in_linea", {{2000, 2000, 0, 0}, {14000, 14100, 0, 0}, {26000, 25900, 0, 0}, {38000, 38000, 0, 0}}, true}),
    [](const ::testing::TestParamInfo<TCaso>& i) { return std::string(i.param.nome); });

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
