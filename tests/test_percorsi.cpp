// The paths of the simulated tablet: what a file may hold, and that the
// built-in figure and walk press and release as a person does.
#include <gtest/gtest.h>

#include <sstream>

#include "sim/percorsi.h"

namespace {

// Presses in a path: states with a button after a state without one.
int Pressioni(const TPercorso& p)
{
    int n = 0, prima = 0;
    for (const TStatoPuntatore& s : p) {
        if (s.bottone > 0 && prima == 0) ++n;
        prima = s.bottone;
    }
    return n;
}

struct TCasoFile {
    const char* nome;
    const char* testo;
    bool valido;
    std::size_t stati;      // read before the end or the bad line
    const char* errore;     // part of the message of a bad file
};

class LeggiPercorsoTest : public ::testing::TestWithParam<TCasoFile> {};

TEST_P(LeggiPercorsoTest, LeggeOSegnalaLaRiga)
{
    const TCasoFile& c = GetParam();
    std::istringstream in(c.testo);
    TPercorso p;
    std::string errore;
    EXPECT_EQ(LeggiPercorso(in, p, errore), c.valido);
    EXPECT_EQ(p.size(), c.stati);
    EXPECT_NE(errore.find(c.errore), std::string::npos) << errore;
}

INSTANTIATE_TEST_SUITE_P(
    File, LeggiPercorsoTest,
    ::testing::Values(TCasoFile{"CommentiERigheVuote", "# x y b\n\n  \n1 2 0\r\n-3 4 1\n", true, 2, ""},
                      TCasoFile{"CampoMancante", "1 2 0\n1 2\n", false, 1, "line 2"},
                      TCasoFile{"CampoInPiu", "1 2 0 9\n", false, 0, "line 1"},
                      TCasoFile{"NonNumeri", "1 2 0\n\nx y 0\n", false, 1, "line 3"},
                      TCasoFile{"BottoneOltre16", "1 2 17\n", false, 0, "out of range"},
                      TCasoFile{"CoordinataOltre32Bit", "4294967296 0 0\n", false, 0, "out of range"},
                      TCasoFile{"CoordinataMinima", "-2147483648 2147483647 16\n", true, 1, ""}),
    [](const ::testing::TestParamInfo<TCasoFile>& i) { return std::string(i.param.nome); });

TEST(LeggiPercorso, ConservaIValori)
{
    std::istringstream in("-2147483648 7 16\n");
    TPercorso p;
    std::string errore;
    ASSERT_TRUE(LeggiPercorso(in, p, errore));
    ASSERT_EQ(p.size(), 1u);
    EXPECT_EQ(p[0].x, INT32_MIN);
    EXPECT_EQ(p[0].y, 7);
    EXPECT_EQ(p[0].bottone, 16);
}

TEST(Figura, PremeIlBottone1AiQuattroAngoliERilascia)
{
    const TPercorso p = Figura(1000, 8000);
    EXPECT_EQ(Pressioni(p), 4);
    for (const TStatoPuntatore& s : p) {
        EXPECT_TRUE(s.bottone == 0 || s.bottone == 1);
        if (s.bottone == 0) continue;
        EXPECT_TRUE(s.x == 1000 || s.x == 9000) << s.x;
        EXPECT_TRUE(s.y == 1000 || s.y == 9000) << s.y;
    }
    EXPECT_EQ(p.back().bottone, 0);  // a cyclic play presses again at the start
}

TEST(FiguraGriglia, PremeINodiColonnaPerColonna)
{
    const TPercorso p = FiguraGriglia(2, 2000, 3000);
    std::vector<std::pair<std::int32_t, std::int32_t>> nodi;
    int prima = 0;
    for (const TStatoPuntatore& s : p) {
        if (s.bottone == 1 && prima == 0) nodi.push_back({s.x, s.y});
        prima = s.bottone;
    }
    const std::vector<std::pair<std::int32_t, std::int32_t>> attesi = {
        {2000, 2000}, {2000, 5000}, {2000, 8000}, {5000, 2000}, {5000, 5000},
        {5000, 8000}, {8000, 2000}, {8000, 5000}, {8000, 8000}};
    EXPECT_EQ(nodi, attesi);
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
    EXPECT_GT(Pressioni(a), 0);
    EXPECT_EQ(a.back().bottone, 0);
}

}  // namespace
