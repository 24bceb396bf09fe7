// The map from counts to ground: orientation, cell search, the
// current report and the calibrated area.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "digit.h"
#include "reports/digit_link.h"
#include "support/digit_accesso.h"
#include "support/griglia_prova.h"

namespace {

using A = CDigitTestAccess;
using TQuattro = std::array<std::int32_t, 4>;
constexpr std::int32_t minimo = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t massimo = std::numeric_limits<std::int32_t>::max();

TEST(CcwTest, EveryPositionRoundASegmentAndCountsThatOverflow32Bits)
{
    struct TCaso { std::int32_t x0, y0, x1, y1, x2, y2; int atteso; };
    const TCaso casi[] = {
        {0, 0, 10, 0, 5, 5, +1}, {0, 0, 10, 0, 5, -5, -1}, {0, 0, 10, 0, 5, 0, 0}, {0, 0, 10, 0, 10, 0, 0},
        {0, 0, 10, 0, 0, 0, 0}, {0, 0, 10, 0, 20, 0, +1}, {0, 0, 10, 0, -5, 0, -1}, {3, -4, 3, -4, 3, -4, 0},
        {0, 0, 0, 10, 0, -1, -1}, {0, 0, 0, 0, 1, 1, +1},
        // Products or sums beyond 32 bits: still the geometric answer.
        {0, 0, 70000, 0, 35000, 70000, +1}, {0, 0, 70000, 0, 35000, -70000, -1},
        {0, 0, 40000, 40000, 60000, 60000, +1}, {0, 0, 40000, 40000, 20000, 20000, 0},
        {0, 0, 40000, 40000, -60000, -60000, -1}, {minimo, minimo, massimo, massimo, 0, 0, 0},
        {minimo, 0, massimo, 0, 0, 1, +1}, {massimo, 0, minimo, 0, 0, 1, -1},
        {minimo, minimo, massimo, minimo, minimo, massimo, +1}, {minimo, minimo, 0, 0, massimo, massimo, +1},
        // Two products of one sign that differ; the far end itself.
        {0, 0, 70000, 1000, 35000, 70000, +1}, {0, 0, 70000, -1000, 35000, -70000, -1}, {minimo, 0, massimo, 0, massimo, 0, 0}};
    CDigit d;
    for (const TCaso& c : casi)
        EXPECT_EQ(A::Ccw(d, c.x0, c.y0, c.x1, c.y1, c.x2, c.y2), c.atteso)
            << c.x0 << "," << c.y0 << " " << c.x1 << "," << c.y1 << " " << c.x2 << "," << c.y2;
}

// The cell that served (x, y) in a grid of SegnaCelle.
long CellaUsata(const CDigit& d, std::int32_t x, std::int32_t y)
{
    double est = 0, nord = 0;
    return d.CalcoloCoordTrasfCalibrFine(x, y, est, nord) ? std::lround(est - x) : -1;
}

void Angoli(CDigit& d, int i, int j, const TQuattro& x, const TQuattro& y)
{
    std::copy(x.begin(), x.end(), A::AngoliX(d)[i][j]);
    std::copy(y.begin(), y.end(), A::AngoliY(d)[i][j]);
}

constexpr TQuattro quadratoX = {0, 0, 100, 100};
constexpr TQuattro quadratoY = {0, 100, 0, 100};

// Mirrored cells hold nothing: every point goes to the nearest reference
// point, which keeps its half count (200.5 beats the earlier cell's 600 from
// x = 400; a truncated sum would tie and give the earlier cell).
TEST(RicercaCellaTest, FirstHoldingCellThenNearestWithTiesToTheEarlier)
{
    CDigit d;
    SegnaCelle(d, 2, 1);
    Angoli(d, 0, 0, quadratoX, quadratoY);
    Angoli(d, 1, 0, {100, 100, 200, 200}, quadratoY);
    EXPECT_EQ(CellaUsata(d, 100, 50), 1) << "shared edge: the first cell in the scan";
    EXPECT_EQ(CellaUsata(d, 150, 50), 2);
    EXPECT_EQ(CellaUsata(d, 100, 150), 1) << "equal distances: the lower East index";
    EXPECT_EQ(CellaUsata(d, 101, 150), 2);
    EXPECT_EQ(CellaUsata(d, 100000, -3), 2) << "far outside: the nearest cell extrapolates";
    SegnaCelle(d, 1, 2);
    Angoli(d, 0, 1, quadratoX, {100, 200, 100, 200});
    EXPECT_EQ(CellaUsata(d, -50, 100), 1) << "equal distances: the lower North index";
    EXPECT_EQ(CellaUsata(d, 50, 150), 101);
    Angoli(d, 0, 0, {700, 700, 500, 500}, quadratoY);
    Angoli(d, 0, 1, {301, 301, 100, 100}, quadratoY);
    EXPECT_EQ(CellaUsata(d, 400, 50), 101) << "mirrored: the nearest half-count reference point";
    EXPECT_EQ(CellaUsata(d, 600, 50), 1);
}

// East 500 + 0.1 x, North 200 + 0.1 y: x and y tell apart.
void RigheSparse(CDigit& d)
{
    const double e[3] = {500, 0.1, 0}, n[3] = {200, 0, 0.1};
    std::copy(e, e + 3, A::CoefCelle(d)[0][0]);
    std::copy(n, n + 3, A::CoefCelle(d)[1][1]);
    A::StatoCalibr(d) = calibPtSparsi;
}

TEST(TrasformaCoordDigitTest, ReadsTheCurrentReportThroughTheMapOrWritesNothing)
{
    CDigit d;
    Scrivi(digitLink.xReport, 1000);
    Scrivi(digitLink.yReport, 3000);
    Scrivi(digitLink.bottonePremuto, 3);
    double v[4] = {11, 12, 13, 14};
    int bottone = 42;
    EXPECT_FALSE(d.TrasformaCoordDigit(v[0], v[1], bottone));
    EXPECT_FALSE(d.CalcoloCoordTrasfCalibrFine(1, 1, v[0], v[1]));
    EXPECT_FALSE(d.GetMaxAreaCalibrata(v[0], v[1], v[2], v[3]));
    EXPECT_FALSE(d.GetSoloAreaCalibrata(v[0], v[1], v[2], v[3]));
    EXPECT_EQ(bottone, 42);
    EXPECT_EQ((std::array<double, 4>{v[0], v[1], v[2], v[3]}), (std::array<double, 4>{11, 12, 13, 14}));

    RigheSparse(d);
    for (int premuto : {3, -1}) {  // a press, then a mere movement
        Scrivi(digitLink.bottonePremuto, premuto);
        ASSERT_TRUE(d.TrasformaCoordDigit(v[0], v[1], bottone));
        EXPECT_NEAR(v[0], 600, 1e-12);
        EXPECT_NEAR(v[1], 500, 1e-12);
        EXPECT_EQ(bottone, premuto);
    }
}

// The limits' images, unsorted; the grid-only area refused when sparse.

TEST(AreaCalibrataTest, MaxAreaIsTheImageOfTheLimits)
{
    CDigit d;
    TDataDigit& dati = d.GetDataDigit();
    dati.xMin = 1000, dati.yMin = 3000;
    dati.xMax = 0, dati.yMax = 2000;
    RigheSparse(d);
    double v[4] = {0, 0, 0, 0};
    ASSERT_TRUE(d.GetMaxAreaCalibrata(v[0], v[1], v[2], v[3]));
    const double attesi[4] = {600, 500, 500, 400};
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(v[k], attesi[k], 1e-12);
    double solo[4] = {1, 2, 3, 4};
    EXPECT_FALSE(d.GetSoloAreaCalibrata(solo[0], solo[1], solo[2], solo[3]));
    EXPECT_EQ(solo[0], 1);
    SegnaCelle(d, 1, 1);
    Angoli(d, 0, 0, quadratoX, quadratoY);
    ASSERT_TRUE(d.GetMaxAreaCalibrata(v[0], v[1], v[2], v[3]));
    EXPECT_NEAR(v[0], 1 + 1000, 1e-6);
    EXPECT_NEAR(v[3], 2000, 1e-6);
}

// Margins are a quarter interval truncated to whole units; a count above the
// tables covers their 21 squares; an interval beyond 32 bits saturates.
TEST(AreaCalibrataTest, GridExtentWithWholeMargins)
{
    struct TCaso { int quadEst, quadNord; double passoEst, passoNord, atteso[4]; };
    const double enorme = 536870911.0;  // a quarter of the greatest 32-bit value
    const TCaso casi[] = {
        {3, 2, 100, 10.7, {975, 1998, 1325, 2023.4}}, {3, 2, 3.9, -10, {1000, 2002, 1011.7, 1978}},
        {30, 2, 100, 10, {975, 1998, 3125, 2022}},
        {1, 1, 1e12, -1e12, {1000 - enorme, 2000 + enorme + 1, 1e12 + 1000 + enorme, -1e12 + 2000 - enorme - 1}}};
    for (const TCaso& c : casi) {
        CDigit d;
        SegnaCelle(d, c.quadEst, c.quadNord);
        A::IniEst(d) = 1000;
        A::IniNord(d) = 2000;
        A::PassoEst(d) = c.passoEst;
        A::PassoNord(d) = c.passoNord;
        double v[4] = {0, 0, 0, 0};
        ASSERT_TRUE(d.GetSoloAreaCalibrata(v[0], v[1], v[2], v[3]));
        for (int k = 0; k < 4; ++k) EXPECT_NEAR(v[k], c.atteso[k], 1e-9) << c.passoEst << " result " << k;
    }
}

}  // namespace
