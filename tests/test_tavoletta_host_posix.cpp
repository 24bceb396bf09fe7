// A host's view: through the exported interface alone, a tablet played on a
// pseudo-terminal behind COM1 drives the host's notifications, model by model.
#include <gtest/gtest.h>

#include <ostream>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "digit.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/registratore.h"
#include "support/suona.h"

namespace {

using namespace std::chrono_literals;

// A model, and a second button its cursor has beside button 1: the text
// formats 4 and 7 carry buttons above 10 only as letters.
struct TModello {
    int tipo, bottone;
};
void PrintTo(const TModello& p, std::ostream* os) { *os << "modello " << p.tipo; }

class HostTest : public ::testing::TestWithParam<TModello> {};

// Each model on the catalogue's line settings plays a stroke in which every
// state is heard: two moves, a press, a release at a new place, a second
// press, a release. Then the last state again, which gives nothing.
TEST_P(HostTest, TheTabletOnTheLineReachesTheHostsTarget)
{
    const TModello& m = GetParam();
    const TStatoPuntatore tratto[] = {{1000, 2000, 0}, {1500, 2500, 0}, {1500, 2500, 1},
                                      {1700, 2700, 0}, {1700, 2700, m.bottone}, {1800, 2800, 0}};
    TTavolettaPty sim(1);
    ASSERT_TRUE(sim.Valida());
    CDigit digit;
    digit.SetDataDigit(DatiModello(m.tipo, 1));
    ASSERT_TRUE(digit.Init(nullptr));
    digit.SendInitString();
    TRegistratore host;
    if (m.tipo == 4) sim.RispondiAlPoll(tratto[0]);  // the first poll goes out with the target
    ASSERT_EQ(digit.SetCommNotificationTo(&host), 1);

    std::vector<TNotifica> attese;
    for (const TStatoPuntatore& s : tratto) {
        attese.push_back(s.bottone ? Pressione(s.bottone, s.x, s.y) : Mossa(s.x, s.y));
        EXPECT_TRUE(RipetiFinche([&] { return host.Notifiche().size() >= attese.size(); },
                                 [&] { sim.Gioca(m.tipo, s); }))
            << "step " << attese.size();
    }
    // The last state again, then a move that marks the end: heard, it shows
    // that everything sent before it was heard too.
    for (int i = 0; i < 3; ++i) sim.Gioca(m.tipo, tratto[5]);
    attese.push_back(Mossa(1900, 2900));
    EXPECT_TRUE(RipetiFinche([&] { return host.Notifiche().size() >= attese.size(); },
                             [&] { sim.Gioca(m.tipo, {1900, 2900, 0}); }));
    digit.StopCommNotification();
    EXPECT_EQ(host.Notifiche(), attese);
}

INSTANTIATE_TEST_SUITE_P(Modelli, HostTest,
                         ::testing::Values(TModello{1, 3}, TModello{2, 3}, TModello{3, 3}, TModello{4, 10},
                                           TModello{5, 12}, TModello{6, 12}, TModello{7, 10}, TModello{8, 4}),
                         [](const ::testing::TestParamInfo<TModello>& i) { return "tipo" + std::to_string(i.param.tipo); });

}  // namespace
