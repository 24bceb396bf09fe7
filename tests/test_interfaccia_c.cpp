// The C interface's answers where the C++ one has no counterpart: a refused
// calibration that leaves the map in force as it was, and a null tablet.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

#include "velmarin.h"

namespace {

// A 2 by 1 grid on tablet (1000 p + 10 q, 1000 q), ground East 100 + 50 p,
// North 200 + 25 q; nodes East index fastest.
struct TNodi {
    std::vector<std::int32_t> x{0, 1000, 2000, 10, 1010, 2010};
    std::vector<std::int32_t> y{0, 0, 0, 1000, 1000, 1000};
};

struct TTerreno {
    int ok;
    double est, nord;
};

class InterfacciaCTest : public ::testing::Test {
protected:
    InterfacciaCTest() { t = velmarin_open(nullptr); }
    ~InterfacciaCTest() override { velmarin_close(t); }

    std::vector<TTerreno> Campioni() const
    {
        std::vector<TTerreno> v;
        for (std::int32_t x : {0, 500, 1500, 1999, 5000}) {
            TTerreno g{0, -1, -1};
            g.ok = velmarin_to_ground(t, x, 300, &g.est, &g.nord);
            v.push_back(g);
        }
        return v;
    }

    velmarin_tablet* t = nullptr;
};

void ControllaUguali(const std::vector<TTerreno>& a, const std::vector<TTerreno>& b, const char* caso)
{
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t k = 0; k < a.size(); ++k) {
        EXPECT_EQ(a[k].ok, b[k].ok) << caso << ", sample " << k;
        EXPECT_EQ(a[k].est, b[k].est) << caso << ", sample " << k;
        EXPECT_EQ(a[k].nord, b[k].nord) << caso << ", sample " << k;
    }
}

// Every refused fit, over a grid in force, leaves that grid serving each
// point as before. The degenerate second cell is refused after the first
// cell was solved over the old one's row.
TEST_F(InterfacciaCTest, ARefusedFitLeavesTheMapInForce)
{
    ASSERT_TRUE(t);
    TNodi n;
    ASSERT_EQ(velmarin_fit_grid(t, 2, 1, 100, 200, 50, 25, n.x.data(), n.y.data()), 1);
    const auto prima = Campioni();
    ASSERT_EQ(prima[1].ok, 1);

    TNodi altra;
    for (auto& x : altra.x) x += 3;  // a good first cell, a different map
    altra.x[2] = altra.x[5] = altra.x[1];
    altra.y[2] = altra.y[5] = altra.y[1];  // the second cell collapses
    const std::int32_t px[] = {0, 1000, 2000, 3000}, py[] = {0, 1000, 2000, 3000};
    const double e[] = {1, 2, 3, 4}, nn[] = {5, 6, 7, 8};
    const double nan = std::nan("");
    const std::vector<std::pair<const char*, std::function<int()>>> rifiuti = {
        {"two points", [&] { return velmarin_fit_points(t, 2, px, py, e, nn); }},
        {"22 points", [&] { return velmarin_fit_points(t, 22, px, py, e, nn); }},
        {"collinear points", [&] { return velmarin_fit_points(t, 4, px, py, e, nn); }},
        {"no x", [&] { return velmarin_fit_points(t, 3, nullptr, py, e, nn); }},
        {"a NaN North", [&] { const double nord[] = {1, nan, 3}; return velmarin_fit_points(t, 3, px, py, e, nord); }},
        {"0 squares", [&] { return velmarin_fit_grid(t, 0, 1, 100, 200, 50, 25, n.x.data(), n.y.data()); }},
        {"22 squares", [&] { return velmarin_fit_grid(t, 22, 1, 100, 200, 50, 25, n.x.data(), n.y.data()); }},
        {"no nodes", [&] { return velmarin_fit_grid(t, 2, 1, 100, 200, 50, 25, nullptr, n.y.data()); }},
        {"an infinite step", [&] { return velmarin_fit_grid(t, 2, 1, 100, 200, INFINITY, 25, n.x.data(), n.y.data()); }},
        {"a degenerate second cell", [&] { return velmarin_fit_grid(t, 2, 1, 0, 0, 1, 1, altra.x.data(), altra.y.data()); }},
    };
    for (const auto& r : rifiuti) {
        EXPECT_EQ(r.second(), 0) << r.first;
        ControllaUguali(prima, Campioni(), r.first);
        double a[4] = {0, 0, 0, 0};
        EXPECT_EQ(velmarin_calibrated_area(t, 0, &a[0], &a[1], &a[2], &a[3]), 1) << r.first;
        EXPECT_EQ(a[2], 2 * 50 + 100 + 12) << r.first;  // the old grid's East end and margin
    }
}

// A null tablet is refused by every call, and nothing is written.
TEST_F(InterfacciaCTest, ANullTabletIsRefused)
{
    double v[4] = {7, 7, 7, 7};
    TDataDigit d{};
    d.tipo = 42;
    const std::int32_t x[] = {0, 1, 0};
    const std::int32_t* nulla = nullptr;
    const int risposte[] = {
        velmarin_connect(nullptr), velmarin_init(nullptr), velmarin_listen(nullptr, nullptr, nullptr, nullptr),
        velmarin_button_function(nullptr, 1), velmarin_is_calibrated(nullptr),
        velmarin_to_ground(nullptr, 1, 1, &v[0], &v[1]), velmarin_calibrated_area(nullptr, 1, &v[0], &v[1], &v[2], &v[3]),
        velmarin_configure(nullptr, &d), velmarin_calibrate_points(nullptr), velmarin_calibrate_grid(nullptr),
        velmarin_fit_points(nullptr, 3, x, x, v, v), velmarin_fit_grid(nullptr, 1, 1, 0, 0, 1, 1, nulla, nulla),
        velmarin_to_ground(t, 1, 1, nullptr, &v[1]),
    };
    for (int r : risposte) EXPECT_EQ(r, 0);
    velmarin_get_setup(nullptr, &d);
    velmarin_set_setup(nullptr, &d);
    velmarin_send_init(nullptr);
    velmarin_send_reset(nullptr);
    velmarin_stop(nullptr);
    velmarin_close(nullptr);
    EXPECT_EQ(d.tipo, 42);
    for (double x : v) EXPECT_EQ(x, 7);
}

}  // namespace
