// The map from counts to ground: orientation, cell tests, cell search, the
// projective formula, the current report and the calibrated area.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "digit.h"
#include "reports/digit_link.h"
#include "support/digit_accesso.h"

namespace {

using A = CDigitTestAccess;
constexpr std::int32_t minimo = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t massimo = std::numeric_limits<std::int32_t>::max();

struct TCcw {
    std::int32_t x0, y0, x1, y1, x2, y2;
    int atteso;
};

class CcwTest : public ::testing::TestWithParam<TCcw> {};

TEST_P(CcwTest, OrientationOfTheThirdPoint)
{
    const TCcw& c = GetParam();
    CDigit d;
    EXPECT_EQ(A::Ccw(d, c.x0, c.y0, c.x1, c.y1, c.x2, c.y2), c.atteso);
}

INSTANTIATE_TEST_SUITE_P(
    IntornoAUnSegmento, CcwTest,
    ::testing::Values(TCcw{0, 0, 10, 0, 5, 5, +1}, TCcw{0, 0, 10, 0, 5, -5, -1},
                      TCcw{0, 0, 10, 0, 5, 0, 0}, TCcw{0, 0, 10, 0, 10, 0, 0},
                      TCcw{0, 0, 10, 0, 0, 0, 0}, TCcw{0, 0, 10, 0, 20, 0, +1},
                      TCcw{0, 0, 10, 0, -5, 0, -1}, TCcw{3, -4, 3, -4, 3, -4, 0},
                      TCcw{0, 0, 0, 10, 0, -1, -1}, TCcw{0, 0, 0, 0, 1, 1, +1}));

// Counts whose 32-bit products or sums would overflow still get the
// geometric answer.
INSTANTIATE_TEST_SUITE_P(
    ConteggiGrandi, CcwTest,
    ::testing::Values(TCcw{0, 0, 70000, 0, 35000, 70000, +1},
                      TCcw{0, 0, 70000, 0, 35000, -70000, -1},
                      TCcw{0, 0, 40000, 40000, 60000, 60000, +1},
                      TCcw{0, 0, 40000, 40000, 20000, 20000, 0},
                      TCcw{0, 0, 40000, 40000, -60000, -60000, -1},
                      TCcw{minimo, minimo, massimo, massimo, 0, 0, 0},
                      TCcw{minimo, 0, massimo, 0, 0, 1, +1},
                      TCcw{massimo, 0, minimo, 0, 0, 1, -1}));

struct TInCella {
    std::int32_t x, y;
    bool dentro;
};

constexpr std::array<std::int32_t, 4> quadratoX = {0, 0, 100, 100};
constexpr std::array<std::int32_t, 4> quadratoY = {0, 100, 0, 100};
constexpr std::array<std::int32_t, 4> specchioX = {100, 100, 0, 0};

TEST(PtInRectTest, CounterClockwiseCellHoldsItsInsideAndBorder)
{
    CDigit d;
    const TInCella punti[] = {{50, 50, true},  {0, 0, true},    {0, 100, true}, {100, 0, true},
                              {100, 100, true}, {50, 0, true},  {100, 50, true}, {101, 50, false},
                              {-1, -1, false},  {50, 101, false}};
    for (const TInCella& p : punti) {
        EXPECT_EQ(A::PtInRect(d, quadratoX.data(), quadratoY.data(), p.x, p.y), p.dentro)
            << p.x << "," << p.y;
        EXPECT_FALSE(A::PtInRect(d, specchioX.data(), quadratoY.data(), p.x, p.y))
            << "a clockwise cell holds nothing: " << p.x << "," << p.y;
    }
}

// Not a rectangle: the cell is split along the diagonal 1-2, and a triangle
// with its three vertices at one position holds every point.
TEST(PtInRectTest, QuadrilateralsAndDegenerateCells)
{
    CDigit d;
    const std::int32_t storX[4] = {0, 0, 100, 300}, storY[4] = {0, 100, 0, 300};
    EXPECT_TRUE(A::PtInRect(d, storX, storY, 250, 240));
    EXPECT_FALSE(A::PtInRect(d, storX, storY, 250, 100));
    EXPECT_TRUE(A::PtInTri(d, 0, 0, 10, 0, 0, 10, 3, 3));
    EXPECT_FALSE(A::PtInTri(d, 0, 0, 0, 10, 10, 0, 3, 3)) << "clockwise";
    const std::int32_t puntoX[4] = {5, 5, 5, 5}, puntoY[4] = {7, 7, 7, 7};
    EXPECT_TRUE(A::PtInRect(d, puntoX, puntoY, -100000, 400000));
}

// A grid whose cell (i, j) maps every point to East i + 10·j + 1, North -1,
// so the result names the cell that served the point.
void GrigliaSegnata(CDigit& d, int quadEst, int quadNord)
{
    A::NumQuadEst(d) = quadEst;
    A::NumQuadNord(d) = quadNord;
    for (int i = 0; i < maxQuadrati; ++i)
        for (int j = 0; j < maxQuadrati; ++j) {
            double* c = A::CoefCelle(d)[i][j];
            for (int k = 0; k < 8; ++k) c[k] = 0.0;
            c[2] = i + 10 * j + 1;
            c[5] = -1;
        }
    A::StatoCalibr(d) = calibGriglia;
}

void Angoli(CDigit& d, int i, int j, std::array<std::int32_t, 4> x, std::array<std::int32_t, 4> y)
{
    for (int c = 0; c < 4; ++c) {
        A::AngoliX(d)[i][j][c] = x[c];
        A::AngoliY(d)[i][j][c] = y[c];
    }
}

double CellaUsata(const CDigit& d, int x, int y)
{
    double est = 0, nord = 0;
    EXPECT_TRUE(d.CalcoloCoordTrasfCalibrFine(x, y, est, nord));
    return est;
}

TEST(RicercaCellaTest, FirstHoldingCellThenNearestWithTiesToTheEarlier)
{
    CDigit d;
    GrigliaSegnata(d, 2, 1);
    Angoli(d, 0, 0, quadratoX, quadratoY);
    Angoli(d, 1, 0, {100, 100, 200, 200}, quadratoY);
    EXPECT_EQ(CellaUsata(d, 100, 50), 1) << "shared edge: the first cell in the scan";
    EXPECT_EQ(CellaUsata(d, 150, 50), 2);
    EXPECT_EQ(CellaUsata(d, 100, 150), 1) << "equal distances: the earlier cell";
    EXPECT_EQ(CellaUsata(d, 101, 150), 2) << "nearer to the second reference point";
    EXPECT_EQ(CellaUsata(d, 100000, -3), 2) << "far outside: the nearest cell extrapolates";
}

TEST(RicercaCellaTest, TiesAlongNorthKeepTheLowerNorthIndex)
{
    CDigit d;
    GrigliaSegnata(d, 1, 2);
    Angoli(d, 0, 0, quadratoX, quadratoY);
    Angoli(d, 0, 1, quadratoX, {100, 200, 100, 200});
    EXPECT_EQ(CellaUsata(d, -50, 100), 1);
    EXPECT_EQ(CellaUsata(d, 50, 150), 11);
}

// A mirrored cell holds nothing: every point goes to the nearest reference
// point, and that point keeps its half count (200.5 here beats 200 from the
// earlier cell, which a truncated sum would tie).
TEST(RicercaCellaTest, MirroredGridIsServedByTheNearestReferencePoint)
{
    CDigit d;
    GrigliaSegnata(d, 1, 2);
    Angoli(d, 0, 0, {700, 700, 500, 500}, quadratoY);
    Angoli(d, 0, 1, {301, 301, 100, 100}, quadratoY);
    EXPECT_EQ(CellaUsata(d, 400, 50), 11);
    EXPECT_EQ(CellaUsata(d, 600, 50), 1) << "its own corners do not hold it";
}

TEST(RicercaCellaTest, OneCellServesTheWholeTablet)
{
    CDigit d;
    GrigliaSegnata(d, 1, 1);
    Angoli(d, 0, 0, quadratoX, quadratoY);
    const std::array<double, 8> riga = {0.08, 0, 0, -0.01, 0.1, 0, -0.0002, 0};
    std::copy(riga.begin(), riga.end(), A::CoefCelle(d)[0][0]);
    for (const auto& p : std::vector<std::array<int, 2>>{{50, 50}, {-4000, 90000}, {1000, 900}}) {
        double est = 0, nord = 0, attE = 0, attN = 0;
        ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(p[0], p[1], est, nord));
        A::CalcoloTrasfOmog(d, p[0], p[1], attE, attN, riga.data());
        EXPECT_EQ(est, attE);
        EXPECT_EQ(nord, attN);
    }
}

TEST(TrasfOmogTest, ProjectiveRowAndDivisionByTheDenominator)
{
    CDigit d;
    const double riga[8] = {0.08, 0, 0, -0.01, 0.1, 0, -0.0002, 0};
    double est = 0, nord = 0;
    A::CalcoloTrasfOmog(d, 1000, 900, est, nord, riga);
    EXPECT_NEAR(est, 100, 1e-12);
    EXPECT_NEAR(nord, 100, 1e-12);
    A::CalcoloTrasfOmog(d, 500, 500, est, nord, riga);
    EXPECT_NEAR(est, 400.0 / 9.0, 1e-12);
    EXPECT_NEAR(nord, 50, 1e-12);
    // w = 3 at (1, 0): 5/3 by division differs in its last bit from 5·(1/3).
    const double terzi[8] = {0, 0, 5, 0, 0, 7, 2, 0};
    A::CalcoloTrasfOmog(d, 1, 0, est, nord, terzi);
    EXPECT_EQ(est, 5.0 / 3.0);
    EXPECT_EQ(nord, 7.0 / 3.0);
}

void RigheSparse(CDigit& d)
{
    const double e[3] = {500, 0.1, 0}, n[3] = {200, 0, 0.1};
    std::copy(e, e + 3, A::CoefCelle(d)[0][0]);
    std::copy(n, n + 3, A::CoefCelle(d)[1][1]);
    A::StatoCalibr(d) = calibPtSparsi;
}

TEST(TrasformaCoordDigitTest, ReadsTheCurrentReportThroughTheMap)
{
    CDigit d;
    RigheSparse(d);
    Scrivi(digitLink.xReport, 1000);
    Scrivi(digitLink.yReport, 1000);
    Scrivi(digitLink.bottonePremuto, 3);
    double est = 0, nord = 0;
    int bottone = 0;
    ASSERT_TRUE(d.TrasformaCoordDigit(est, nord, bottone));
    EXPECT_NEAR(est, 600, 1e-12);
    EXPECT_NEAR(nord, 300, 1e-12);
    EXPECT_EQ(bottone, 3);
    Scrivi(digitLink.bottonePremuto, -1);
    ASSERT_TRUE(d.TrasformaCoordDigit(est, nord, bottone));
    EXPECT_EQ(bottone, -1) << "a mere movement";
}

TEST(TrasformaCoordDigitTest, WithoutAMapNothingIsWritten)
{
    CDigit d;
    Scrivi(digitLink.bottonePremuto, 3);
    double valori[4] = {11, 12, 13, 14};
    int bottone = 42;
    EXPECT_FALSE(d.TrasformaCoordDigit(valori[0], valori[1], bottone));
    EXPECT_EQ(bottone, 42);
    EXPECT_FALSE(d.CalcoloCoordTrasfCalibrFine(1, 1, valori[0], valori[1]));
    EXPECT_FALSE(d.GetMaxAreaCalibrata(valori[0], valori[1], valori[2], valori[3]));
    EXPECT_FALSE(d.GetSoloAreaCalibrata(valori[0], valori[1], valori[2], valori[3]));
    EXPECT_EQ(valori[0], 11);
    EXPECT_EQ(valori[1], 12);
    EXPECT_EQ(valori[2], 13);
    EXPECT_EQ(valori[3], 14);
}

TEST(AreaCalibrataTest, MaxAreaIsTheImageOfTheLimitsInBothStates)
{
    CDigit d;
    d.GetDataDigit().xMin = 1000;
    d.GetDataDigit().yMin = 1000;
    d.GetDataDigit().xMax = 0;
    d.GetDataDigit().yMax = 0;
    RigheSparse(d);
    double v[4] = {0, 0, 0, 0};
    ASSERT_TRUE(d.GetMaxAreaCalibrata(v[0], v[1], v[2], v[3]));
    EXPECT_NEAR(v[0], 600, 1e-12);
    EXPECT_NEAR(v[1], 300, 1e-12);
    EXPECT_NEAR(v[2], 500, 1e-12) << "not sorted";
    EXPECT_NEAR(v[3], 200, 1e-12);
    double solo[4] = {1, 2, 3, 4};
    EXPECT_FALSE(d.GetSoloAreaCalibrata(solo[0], solo[1], solo[2], solo[3]));
    EXPECT_EQ(solo[0], 1);

    GrigliaSegnata(d, 1, 1);
    Angoli(d, 0, 0, quadratoX, quadratoY);
    ASSERT_TRUE(d.GetMaxAreaCalibrata(v[0], v[1], v[2], v[3]));
    EXPECT_EQ(v[0], 1);
    EXPECT_EQ(v[3], -1);
}

struct TArea {
    const char* nome;
    int quadEst, quadNord;
    double passoEst, passoNord;
    double atteso[4];
};

class SoloAreaTest : public ::testing::TestWithParam<TArea> {};

// Margins are a quarter interval truncated to whole units.
TEST_P(SoloAreaTest, GridExtentWithWholeMargins)
{
    const TArea& c = GetParam();
    CDigit d;
    GrigliaSegnata(d, c.quadEst, c.quadNord);
    A::IniEst(d) = 1000;
    A::IniNord(d) = 2000;
    A::PassoEst(d) = c.passoEst;
    A::PassoNord(d) = c.passoNord;
    double v[4] = {0, 0, 0, 0};
    ASSERT_TRUE(d.GetSoloAreaCalibrata(v[0], v[1], v[2], v[3]));
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(v[k], c.atteso[k], 1e-9) << "result " << k;
}

INSTANTIATE_TEST_SUITE_P(
    Casi, SoloAreaTest,
    ::testing::Values(TArea{"positivi", 3, 2, 100, 10.7, {975, 1998, 1325, 2023.4}},
                      TArea{"margineNegativo", 3, 2, 3.9, -10, {1000, 2002, 1011.7, 1978}},
                      TArea{"oltreLeTabelle", 30, 2, 100, 10, {975, 1998, 3125, 2022}},
                      TArea{"passoEnorme", 1, 1, 1e12, -1e12,
                            {1000 - 536870911.0, 2000 + 536870912.0, 1e12 + 1000 + 536870911.0,
                             -1e12 + 2000 - 536870912.0}}),
    [](const ::testing::TestParamInfo<TArea>& i) { return std::string(i.param.nome); });

}  // namespace
