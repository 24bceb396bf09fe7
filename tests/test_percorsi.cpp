// The paths of the simulated tablet: what a file may hold, and that the
// built-in figure and walk press and release as a person does.
#include <gtest/gtest.h>

#include <sstream>
#include <utility>
#include <vector>

#include "sim/percorsi.h"

namespace {

using TNodiPremuti = std::vector<std::pair<std::int32_t, std::int32_t>>;

// Where a path presses: states with a button after a state without one.
TNodiPremuti Pressioni(const TPercorso& p)
{
    TNodiPremuti n;
    int prima = 0;
    for (const TStatoPuntatore& s : p) {
        if (s.bottone > 0 && prima == 0) n.push_back({s.x, s.y});
        prima = s.bottone;
    }
    return n;
}

TEST(LeggiPercorso, LeggeOSegnalaLaRiga)
{
    struct TCaso {
        const char* testo;
        bool valido;
        std::size_t stati;  // read before the end or the bad line
        const char* errore;  // part of the message of a bad file
        TStatoPuntatore ultimo;
    };
    const TCaso casi[] = {{"# x y b\n\n  \n1 2 0\r\n-3 4 1\n", true, 2, "", {-3, 4, 1}},
                          {"1 2 0\n1 2\n", false, 1, "line 2", {1, 2, 0}},
                          {"1 2 0 9\n", false, 0, "line 1", {}},
                          {"1 2 0\n\nx y 0\n", false, 1, "line 3", {1, 2, 0}},
                          {"1 2 17\n", false, 0, "out of range", {}},
                          {"4294967296 0 0\n", false, 0, "out of range", {}},
                          {"-2147483648 2147483647 16\n", true, 1, "", {INT32_MIN, INT32_MAX, 16}}};
    for (const TCaso& c : casi) {
        std::istringstream in(c.testo);
        TPercorso p;
        std::string errore;
        EXPECT_EQ(LeggiPercorso(in, p, errore), c.valido) << c.testo;
        ASSERT_EQ(p.size(), c.stati) << c.testo;
        EXPECT_NE(errore.find(c.errore), std::string::npos) << errore;
        if (p.empty()) continue;
        EXPECT_EQ(p.back().x, c.ultimo.x) << c.testo;
        EXPECT_EQ(p.back().y, c.ultimo.y) << c.testo;
        EXPECT_EQ(p.back().bottone, c.ultimo.bottone) << c.testo;
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
    const TNodiPremuti attesi = {{2000, 2000}, {2000, 5000}, {2000, 8000}, {5000, 2000}, {5000, 5000},
                                 {5000, 8000}, {8000, 2000}, {8000, 5000}, {8000, 8000}};
    EXPECT_EQ(Pressioni(FiguraGriglia(2, 2000, 3000)), attesi);
}

TEST(PasseggiataCasuale, RestaNelQuadratoESiRipeteColSeme)
{
    const TPercorso a = PasseggiataCasuale(7, 5000, 1000, 60);
    const TPercorso b = PasseggiataCasuale(7, 5000, 1000, 60);
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        ASSERT_TRUE(a[i].x >= 0 && a[i].x <= 1000 && a[i].y >= 0 && a[i].y <= 1000) << i;
        ASSERT_EQ(a[i].x, b[i].x);
        ASSERT_EQ(a[i].bottone, b[i].bottone);
    }
    EXPECT_FALSE(Pressioni(a).empty());
    EXPECT_EQ(a.back().bottone, 0);
}

}  // namespace
