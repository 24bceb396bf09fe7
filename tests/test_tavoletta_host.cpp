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

struct TModello {
    int tipo;
    std::size_t lenReport;  // one gather of the model
    int bottoneA, bottoneB;  // two buttons the model's cursor has
};
void PrintTo(const TModello& p, std::ostream* os) { *os << "modello " << p.tipo; }

// A stroke in which every state is heard: two moves, a press, a release at a
// new place, a second press, a release. Then the last state again, which
// gives nothing.
struct TPasso {
    TStatoPuntatore stato;
    TNotifica attesa;
};

std::vector<TPasso> Tratto(const TModello& m)
{
    return {
        {{1000, 2000, 0}, Mossa(1000, 2000)},
        {{1500, 2500, 0}, Mossa(1500, 2500)},
        {{1500, 2500, m.bottoneA}, Pressione(m.bottoneA, 1500, 2500)},
        {{1700, 2700, 0}, Mossa(1700, 2700)},
        {{1700, 2700, m.bottoneB}, Pressione(m.bottoneB, 1700, 2700)},
        {{1800, 2800, 0}, Mossa(1800, 2800)},
    };
}

class HostTest : public ::testing::TestWithParam<TModello> {};

TEST_P(HostTest, TheTabletOnTheLineReachesTheHostsTarget)
{
    const TModello& m = GetParam();
    TTavolettaPty sim(1);
    ASSERT_TRUE(sim.Valida());

    CDigit digit;
    digit.SetDataDigit(DatiModello(m.tipo, 1));
    ASSERT_TRUE(digit.Init(nullptr));
    digit.SendInitString();
    TRegistratore host;
    const std::vector<TPasso> tratto = Tratto(m);
    const bool polled = m.tipo == 4;  // answers each poll; the first goes out with the target
    if (polled) sim.RispondiAlPoll(tratto.front().stato);
    ASSERT_EQ(digit.SetCommNotificationTo(&host), 1);

    std::vector<TNotifica> attese;
    for (const TPasso& p : tratto) {
        attese.push_back(p.attesa);
        if (polled) sim.RispondiAlPoll(p.stato);
        const bool sentito = polled ? AttendiNotifiche(host, attese.size())
                                    : SuonaFinoA(sim, m.tipo, p.stato, m.lenReport, host, attese.size());
        EXPECT_TRUE(sentito) << "step " << attese.size();
    }
    for (int i = 0; i < 3 && !polled; ++i) {
        sim.InviaStato(m.tipo, tratto.back().stato, m.lenReport);
        std::this_thread::sleep_for(30ms);
    }
    std::this_thread::sleep_for(100ms);
    digit.StopCommNotification();
    EXPECT_EQ(host.Notifiche(), attese);
}

// Each model on the catalogue's line settings, and two buttons each can
// report: the text formats 4 and 7 carry buttons above 10 only as letters.
INSTANTIATE_TEST_SUITE_P(Modelli, HostTest,
                         ::testing::Values(TModello{1, 15, 1, 3}, TModello{2, 40, 1, 3}, TModello{3, 40, 1, 3},
                                           TModello{4, 40, 1, 10}, TModello{5, 20, 1, 12}, TModello{6, 40, 1, 12},
                                           TModello{7, 40, 1, 10}, TModello{8, 15, 1, 4}),
                         [](const ::testing::TestParamInfo<TModello>& i) {
                             return "tipo" + std::to_string(i.param.tipo);
                         });

}  // namespace
