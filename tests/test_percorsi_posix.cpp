// Where the simulated tablet goes: what a path file may hold, that the
// built-in figure and walk press and release as a person does, and where the
// host's simulated tablet digitizes calibration points.
#include <gtest/gtest.h>

#include <sstream>
#include <utility>
#include <vector>

#include "collegamento.h"
#include "sim/percorsi.h"

namespace {

using TPunti = std::vector<std::pair<std::int32_t, std::int32_t>>;
// The nodes of the built-in 2 by 2 grid, in the order a grid calibration asks
// them: East along x, North varying fastest.
const TPunti nodi = {{2000, 2000}, {2000, 5000}, {2000, 8000}, {5000, 2000}, {5000, 5000},
                     {5000, 8000}, {8000, 2000}, {8000, 5000}, {8000, 8000}};

// Where a path presses: states with a button after a state without one.
TPunti Pressioni(const TPercorso& p)
{
    TPunti n;
    for (std::size_t i = 0; i < p.size(); ++i)
        if (p[i].bottone > 0 && (i == 0 || p[i - 1].bottone == 0)) n.push_back({p[i].x, p[i].y});
    return n;
}

TEST(LeggiPercorso, LeggeOSegnalaLaRiga)
{
    const struct {
        const char* testo;
        std::size_t stati;   // read before the end or the bad line
        const char* errore;  // part of the message of a bad file; "" for a good one
        TStatoPuntatore ultimo;
    } casi[] = {{"# x y b\n\n  \n1 2 0\r\n-3 4 1\n", 2, "", {-3, 4, 1}},
                {"1 2 0\n1 2\n", 1, "line 2", {1, 2, 0}},
                {"1 2 0 9\n", 0, "line 1", {}},
                {"1 2 0\n\nx y 0\n", 1, "line 3", {1, 2, 0}},
                {"1 2 17\n", 0, "out of range", {}},
                {"4294967296 0 0\n", 0, "out of range", {}},
                {"-2147483648 2147483647 16\n", 1, "", {INT32_MIN, INT32_MAX, 16}}};
    for (const auto& c : casi) {
        SCOPED_TRACE(c.testo);
        std::istringstream in(c.testo);
        TPercorso p;
        std::string errore;
        EXPECT_EQ(LeggiPercorso(in, p, errore), *c.errore == '\0');
        EXPECT_NE(errore.find(c.errore), std::string::npos) << errore;
        ASSERT_EQ(p.size(), c.stati);
        if (p.empty()) continue;
        EXPECT_EQ(p.back().x, c.ultimo.x);
        EXPECT_EQ(p.back().y, c.ultimo.y);
        EXPECT_EQ(p.back().bottone, c.ultimo.bottone);
    }
}

// The square's four corners with button 1 only, released at the end so that
// a cyclic play presses again at the start; the grid's nodes column by column.
TEST(Figura, PremeIlBottone1AgliAngoliEAiNodiERilascia)
{
    const TPercorso p = Figura(1000, 8000);
    EXPECT_EQ(Pressioni(p).size(), 4u);
    for (const TStatoPuntatore& s : p)
        EXPECT_TRUE(s.bottone == 0 || (s.bottone == 1 && (s.x == 1000 || s.x == 9000) && (s.y == 1000 || s.y == 9000)))
            << s.x << "," << s.y << " " << s.bottone;
    EXPECT_EQ(p.back().bottone, 0);
    EXPECT_EQ(Pressioni(FiguraGriglia(2, 2000, 3000)), nodi);
}

TEST(PasseggiataCasuale, RestaNelQuadratoESiRipeteColSeme)
{
    const TPercorso a = PasseggiataCasuale(7, 5000, 1000, 60), b = PasseggiataCasuale(7, 5000, 1000, 60);
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        ASSERT_TRUE(a[i].x >= 0 && a[i].x <= 1000 && a[i].y >= 0 && a[i].y <= 1000) << i;
        ASSERT_EQ(a[i].x, b[i].x);
        ASSERT_EQ(a[i].bottone, b[i].bottone);
    }
    EXPECT_FALSE(Pressioni(a).empty());
    EXPECT_EQ(a.back().bottone, 0);
}

// The host's tablet digitizes a grid's nodes in order, and sparse points of
// which the first three already give an affine map.
TEST(PuntoSimulato, GrigliaInOrdineEPuntiSparsiNonAllineati)
{
    for (int n = 0; n < 9; ++n) {
        const TPuntoSimulato p = PuntoSimulato(n, true);
        EXPECT_EQ(std::make_pair(p.x, p.y), nodi[n]) << "node " << n;
    }
    const TPuntoSimulato a = PuntoSimulato(0, false), b = PuntoSimulato(1, false), c = PuntoSimulato(2, false);
    const std::int64_t area2 = std::int64_t{b.x - a.x} * (c.y - a.y) - std::int64_t{b.y - a.y} * (c.x - a.x);
    EXPECT_NE(area2, 0) << "three sparse points in a line give no affine map";
}

}  // namespace
