// The C interface's answers where the C++ one has no counterpart: a refused
// calibration that leaves the map in force as it was, and a null tablet.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "support/tick_finto.h"
#include "support/utente_finto.h"
#include "velmarin.h"

namespace {

// What the tablet's map gives along a line across the grid and beyond it.
std::vector<std::tuple<int, double, double>> Campioni(velmarin_tablet* t)
{
    std::vector<std::tuple<int, double, double>> v;
    for (std::int32_t x : {0, 500, 1500, 1999, 5000}) {
        double est = -1, nord = -1;
        const int ok = velmarin_to_ground(t, x, 300, &est, &nord);
        v.emplace_back(ok, est, nord);
    }
    return v;
}

// Every refused fit, over a grid in force, leaves that grid serving each
// point as before. The degenerate second cell is refused after the first
// cell was solved over the old one's row.
TEST(InterfacciaCTest, ARefusedFitLeavesTheMapInForce)
{
    velmarin_tablet* t = velmarin_open(nullptr);
    ASSERT_TRUE(t);
    // A 2 by 1 grid on tablet (1000 p + 10 q, 1000 q), ground East 100 + 50 p,
    // North 200 + 25 q; nodes East index fastest.
    std::vector<std::int32_t> nx{0, 1000, 2000, 10, 1010, 2010}, ny{0, 0, 0, 1000, 1000, 1000};
    ASSERT_EQ(velmarin_fit_grid(t, 2, 1, 100, 200, 50, 25, nx.data(), ny.data()), 1);
    const auto prima = Campioni(t);
    ASSERT_EQ(std::get<0>(prima[1]), 1);

    std::vector<std::int32_t> ax = nx, ay = ny;
    for (auto& x : ax) x += 3;  // a good first cell, a different map
    ax[2] = ax[5] = ax[1];
    ay[2] = ay[5] = ay[1];  // the second cell collapses
    const std::int32_t px[] = {0, 1000, 2000, 3000}, py[] = {0, 1000, 2000, 3000};
    const double e[] = {1, 2, 3, 4}, nn[] = {5, 6, 7, 8}, nordNaN[] = {1, std::nan(""), 3};
    const std::int32_t qx[] = {0, 1000, 0, 1000}, qy[] = {0, 0, 1000, 1000};
    const double enorme[] = {2, 1e308, 3, 1e308};
    struct TRifiuto {
        const char* caso;
        std::function<int()> chiamata;
        const char* perche;  // what velmarin_last_error says
    };
    const TRifiuto rifiuti[] = {
        {"two points", [&] { return velmarin_fit_points(t, 2, px, py, e, nn); }, "a sparse fit takes 3 to 21 points, not 2"},
        {"22 points", [&] { return velmarin_fit_points(t, 22, px, py, e, nn); }, "a sparse fit takes 3 to 21 points, not 22"},
        {"collinear points", [&] { return velmarin_fit_points(t, 4, px, py, e, nn); }, "the points give no map"},
        {"no x", [&] { return velmarin_fit_points(t, 3, nullptr, py, e, nn); }, "a sparse fit needs x, y, east and north"},
        {"a NaN North", [&] { return velmarin_fit_points(t, 3, px, py, e, nordNaN); }, "a ground coordinate is not finite"},
        {"an East that overflows the fit", [&] { return velmarin_fit_points(t, 4, qx, qy, enorme, nn); }, "the points give no map"},
        {"a grid that overflows its cells", [&] { return velmarin_fit_grid(t, 2, 1, 1e308, 200, 50, 25, nx.data(), ny.data()); }, "a cell gives no map"},
        {"0 squares", [&] { return velmarin_fit_grid(t, 0, 1, 100, 200, 50, 25, nx.data(), ny.data()); }, "a grid has 1 to 21 squares each way, not 0 by 1"},
        {"22 squares", [&] { return velmarin_fit_grid(t, 22, 1, 100, 200, 50, 25, nx.data(), ny.data()); }, "a grid has 1 to 21 squares each way, not 22 by 1"},
        {"no nodes", [&] { return velmarin_fit_grid(t, 2, 1, 100, 200, 50, 25, nullptr, ny.data()); }, "a grid fit needs its nodes' x and y"},
        {"an infinite step", [&] { return velmarin_fit_grid(t, 2, 1, 100, 200, INFINITY, 25, nx.data(), ny.data()); }, "the grid's origin and steps must be finite"},
        {"a degenerate second cell", [&] { return velmarin_fit_grid(t, 2, 1, 0, 0, 1, 1, ax.data(), ay.data()); }, "a cell gives no map"},
    };
    for (const auto& [caso, rifiuto, perche] : rifiuti) {
        SCOPED_TRACE(caso);
        EXPECT_EQ(rifiuto(), 0);
        EXPECT_EQ(std::string(velmarin_last_error()).rfind(perche, 0), 0u) << velmarin_last_error();
        EXPECT_EQ(Campioni(t), prima);
        double a[4] = {0, 0, 0, 0};
        EXPECT_EQ(velmarin_calibrated_area(t, 0, &a[0], &a[1], &a[2], &a[3]), 1);
        EXPECT_EQ(a[2], 2 * 50 + 100 + 12);  // the old grid's East end and margin
    }
    velmarin_close(t);
}

// A cell of a tablet trapezoid mapped onto a ground square sends the line
// where its sides meet (y = 2000) to infinity: there the map gives no finite
// value, and the C interface refuses it rather than hand it on.
TEST(InterfacciaCTest, NoInfiniteGroundValueIsGivenAsASuccess)
{
    velmarin_tablet* t = velmarin_open(nullptr);
    const std::int32_t x[] = {0, 1000, 250, 750}, y[] = {0, 0, 1000, 1000};
    ASSERT_EQ(velmarin_fit_grid(t, 1, 1, 0, 0, 1, 1, x, y), 1);
    double est = -7, nord = -7;
    EXPECT_EQ(velmarin_to_ground(t, 500, 500, &est, &nord), 1);
    EXPECT_TRUE(std::isfinite(est) && std::isfinite(nord));
    est = nord = -7;
    EXPECT_EQ(velmarin_to_ground(t, 500, 2000, &est, &nord), 0);
    EXPECT_EQ(std::make_pair(est, nord), std::make_pair(-7.0, -7.0));
    velmarin_close(t);
}

// A null tablet is refused by every call, and nothing is written.
TEST(InterfacciaCTest, ANullTabletIsRefused)
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
    };
    EXPECT_STREQ(velmarin_last_error(), "velmarin_fit_grid: the tablet is null");
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

// The dialogs through the C interface answer as the person did; a
// calibration whose tablet cannot connect gives 0, after its box.
TEST(InterfacciaCTest, TheDialogsAnswerAsThePersonDid)
{
    TUtenteFinto ui;
    TTickFinto veloce;  // the tablet's command waits, in no real time
    TDataDigit d{};
    ASSERT_EQ(velmarin_model_setup(5, &d), 1);
    velmarin_tablet* t = velmarin_open(&d);
    ui.script.Esc();
    EXPECT_EQ(velmarin_configure(t, &d), 2);
    ui.script.Invio();
    EXPECT_EQ(velmarin_configure(t, &d), 1);
    EXPECT_EQ(d.tipo, 5);
    ASSERT_EQ(velmarin_map_port(d.porta, "/nonexistent/velmarin-tty"), 1);
    ui.script.Esc();  // each calibration's first dialog opens all the same
    EXPECT_EQ(velmarin_calibrate_points(t), 0);
    ui.script.Esc();
    EXPECT_EQ(velmarin_calibrate_grid(t), 0);
    velmarin_map_port(d.porta, nullptr);
    EXPECT_EQ(ui.Messaggi().size(), 2u);
    EXPECT_EQ(velmarin_is_calibrated(t), 0);
    velmarin_close(t);
}

// On every platform a mapped port is in the list, whatever the system
// lists beside it, and the texts are cut to their arrays.
TEST(InterfacciaCTest, AMappedPortIsListedWithItsNumber)
{
    const std::string lungo = "velmarin-nessun-dispositivo-" + std::string(300, 'x');
    ASSERT_EQ(velmarin_map_port(9, lungo.c_str()), 1);
    std::vector<velmarin_port_info> porte(static_cast<std::size_t>(velmarin_list_ports(nullptr, 0)));
    ASSERT_EQ(velmarin_list_ports(porte.data(), static_cast<int>(porte.size())), static_cast<int>(porte.size()));
    velmarin_map_port(9, nullptr);
    int trovate = 0;
    for (const auto& p : porte) {
        if (p.port != 9) continue;
        ++trovate;
        EXPECT_EQ(std::make_tuple(std::string(p.device), std::string(p.description), p.busy),
                  std::make_tuple(lungo.substr(0, sizeof p.device - 1), std::string("COM9, mapped"), 0));
    }
    EXPECT_EQ(trovate, 1);
    // A list shorter than the ports: the rest is not written.
    velmarin_port_info due[2]{};
    due[1].port = -7;
    ASSERT_EQ(velmarin_map_port(9, lungo.c_str()), 1);
    EXPECT_GE(velmarin_list_ports(due, 1), 1);
    velmarin_map_port(9, nullptr);
    EXPECT_EQ(due[1].port, -7);
}

// On a calibrated tablet every null result pointer and every argument out of
// its range is refused with its reason, and no result is written; so is a
// report of an uncalibrated one, and a report fills no more than its room.
TEST(InterfacciaCTest, EachNullResultAndEachArgumentOutOfRangeIsRefused)
{
    TDataDigit d{};
    ASSERT_EQ(velmarin_model_setup(5, &d), 1);
    d.limitiDefiniti = true, d.xMin = 0, d.yMin = 0, d.xMax = 1000, d.yMax = 1000;
    velmarin_tablet* t = velmarin_open(&d);
    const std::int32_t x[] = {0, 1000, 0}, y[] = {0, 0, 1000};
    const double e[] = {10, 20, 10}, n[] = {30, 30, 40};
    ASSERT_EQ(velmarin_fit_points(t, 3, x, y, e, n), 1);
    ASSERT_EQ(velmarin_is_calibrated(t), 1);
    double v[4] = {7, 7, 7, 7};
    TDataDigit fuori{};
    fuori.tipo = 42;
    velmarin_tablet* nuova = velmarin_open(nullptr);
    const struct {
        const char* perche;
        std::function<int()> chiamata;
    } casi[] = {
        {"velmarin_to_ground: `east` or `north` is null", [&] { return velmarin_to_ground(t, 5, 5, nullptr, &v[1]); }},
        {"velmarin_to_ground: `east` or `north` is null", [&] { return velmarin_to_ground(t, 5, 5, &v[0], nullptr); }},
        {"velmarin_calibrated_area: a result pointer is null", [&] { return velmarin_calibrated_area(t, 1, nullptr, &v[1], &v[2], &v[3]); }},
        {"velmarin_calibrated_area: a result pointer is null", [&] { return velmarin_calibrated_area(t, 1, &v[0], nullptr, &v[2], &v[3]); }},
        {"velmarin_calibrated_area: a result pointer is null", [&] { return velmarin_calibrated_area(t, 1, &v[0], &v[1], nullptr, &v[3]); }},
        {"velmarin_calibrated_area: a result pointer is null", [&] { return velmarin_calibrated_area(t, 1, &v[0], &v[1], &v[2], nullptr); }},
        {"velmarin_calibrated_area: no grid calibration", [&] { return velmarin_calibrated_area(t, 0, &v[0], &v[1], &v[2], &v[3]); }},
        {"velmarin_model_setup: model 0: the models are 1 to 8", [&] { return velmarin_model_setup(0, &fuori); }},
        {"velmarin_model_setup: model 9: the models are 1 to 8", [&] { return velmarin_model_setup(9, &fuori); }},
        {"velmarin_model_setup: `out` is null", [&] { return velmarin_model_setup(5, nullptr); }},
        {"velmarin_map_port: port 0: the ports are 1 to 255", [&] { return velmarin_map_port(0, "x"); }},
        {"velmarin_map_port: port 256: the ports are 1 to 255", [&] { return velmarin_map_port(256, "x"); }},
        {"velmarin_check_port: port 256: the ports are 1 to 255", [&] { return velmarin_check_port(256); }},
        {"velmarin_configure: `setup` is null", [&] { return velmarin_configure(t, nullptr); }},
        {"velmarin_fit_report: no calibration in force, or its points are not known",
         [&] { return velmarin_fit_report(nuova, nullptr, nullptr, 0); }},
        {"velmarin_digitize: the tablet is null", [&] { return velmarin_digitize(nullptr, nullptr, nullptr) ? 1 : 0; }},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.perche);
        EXPECT_EQ(c.chiamata(), 0);
        EXPECT_STREQ(velmarin_last_error(), c.perche);
    }
    for (double r : v) EXPECT_EQ(r, 7);
    EXPECT_EQ(fuori.tipo, 42);
    velmarin_point_residual residui[2]{};
    residui[1].x = -1;  // beyond the room the host gave: left as it was
    EXPECT_EQ(velmarin_fit_report(t, nullptr, residui, 1), 3);
    EXPECT_EQ(std::make_pair(residui[0].x, residui[1].x), std::make_pair(0, -1));
    const char* nessuno = nullptr;
    EXPECT_EQ(std::make_tuple(velmarin_model_name(0), velmarin_model_name(9), velmarin_function_name(3), velmarin_function_name(9)),
              std::make_tuple(nessuno, nessuno, nessuno, nessuno));
    EXPECT_STREQ(velmarin_function_name(0), "-");
    ASSERT_EQ(velmarin_map_port(1, "/nonexistent/velmarin-tty"), 1);  // the first port is checked, not refused
    EXPECT_EQ(velmarin_check_port(1), 0);
    EXPECT_EQ(std::string(velmarin_last_error()).rfind("COM1 (/nonexistent/velmarin-tty): cannot be opened", 0), 0u);
    velmarin_map_port(1, nullptr);
    velmarin_close(nuova);
    velmarin_close(t);
}

}  // namespace
