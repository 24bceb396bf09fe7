// Reports in real time on a pseudo-terminal, model by model, streamed or one
// at a time: nothing is heard that was not sent (cut reports: test_inquadratura).
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "sim/codifica_report.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/registratore.h"
#include "support/ripeti.h"

namespace {

using namespace std::chrono;
constexpr int portaProva = 4;

class InquadraturaSuLinea : public TProvaSuLinea, public ::testing::WithParamInterface<int> {
protected:
    InquadraturaSuLinea() : TProvaSuLinea(portaProva), sim(portaProva) {}
    void SetUp() override
    {
        ASSERT_TRUE(sim.Valida());
        ASSERT_TRUE(Collega(digit, &reg));
        // A tablet at rest before its first report: only a quiet line tells
        // a text model's reader that the next byte begins a report.
        std::this_thread::sleep_for(milliseconds(200));
    }
    void TearDown() override
    {
        digit.StopCommNotification();
        TProvaSuLinea::TearDown();
    }
    int Tipo() const { return GetParam(); }
    bool Invia(const TStatoPuntatore& s) { return sim.Invia(CodificaReport(Tipo(), s.x, s.y, s.bottone)); }
    bool Sentito(const TStatoPuntatore& s)
    {
        return AttendiFinche([&] {
            const auto n = reg.Notifiche();
            return !n.empty() && n.back() == Udito(s);
        });
    }

    TTavolettaPty sim;
    TRegistratore reg;
    CDigit digit{Dati(Tipo())};
};

// Positions, a press held four reports, then rest: heard in order, the press
// once, the resting position last.
TEST_P(InquadraturaSuLinea, AStreamingTabletIsHeardInOrderWithItsPressOnceAndItsRestingPosition)
{
    for (milliseconds passo : {milliseconds(5), milliseconds(20)}) {
        SCOPED_TRACE("a report every " + std::to_string(passo.count()) + " ms");
        reg.Svuota();
        std::vector<TStatoPuntatore> stati;
        const int x0 = 1000 + 500 * static_cast<int>(passo.count());
        for (int i = 0; i < 20; ++i) stati.push_back({x0 + 10 * i, 2000 + 7 * i, (i >= 8 && i < 12) ? 1 : 0});
        for (int i = 0; i < 4; ++i) stati.push_back(stati.back());
        std::vector<TNotifica> inviato;
        for (const TStatoPuntatore& s : stati) {
            inviato.push_back(Udito(s));
            ASSERT_TRUE(Invia(s));
            std::this_thread::sleep_for(passo);  // the tablet's pace
        }
        ASSERT_TRUE(Sentito(stati.back()));
        const std::vector<TNotifica> udito = reg.Notifiche();
        EXPECT_TRUE(Sottosequenza(udito, inviato)) << ::testing::PrintToString(udito);
        EXPECT_EQ(std::count_if(udito.begin(), udito.end(), [](const TNotifica& n) { return n.bottone != 0; }), 1);
    }
}

// One report every 200 ms, then one after 2 s: each heard, nothing else.

TEST_P(InquadraturaSuLinea, ASlowTabletIsHeardReportByReport)
{
    const TStatoPuntatore stati[] = {{500, 600, 0}, {500, 600, 3}, {700, 800, 0}, {710, 800, 0}};
    std::vector<TNotifica> attese;
    for (const TStatoPuntatore& s : stati) {
        const auto prossimo = steady_clock::now() + (&s == &stati[3] ? seconds(2) : milliseconds(200));
        ASSERT_TRUE(Invia(s));
        attese.push_back(Udito(s));
        ASSERT_TRUE(Sentito(s));
        std::this_thread::sleep_until(prossimo);  // the tablet's pace
    }
    EXPECT_EQ(reg.Notifiche(), attese);
}

INSTANTIATE_TEST_SUITE_P(Modelli, InquadraturaSuLinea, ::testing::Range(1, 9));

// The polled model: a reply cut short is closed once the line is quiet, and
// the next poll goes out, so the chain of polls goes on.
class InquadraturaPoll : public TProvaSuLinea {
protected:
    InquadraturaPoll() : TProvaSuLinea(portaProva) {}
};

TEST_F(InquadraturaPoll, AReplyCutShortIsFollowedByTheNextPoll)
{
    TTavolettaPty sim(portaProva);
    TRegistratore reg;
    CDigit d(Dati(4));
    ASSERT_TRUE(sim.Valida() && Collega(d, &reg));
    ASSERT_TRUE(AttendiFinche([&] { return sim.PollRicevuti() == 1; }));
    ASSERT_TRUE(sim.Invia("@D1+0012"));
    ASSERT_TRUE(AttendiFinche([&] { return sim.PollRicevuti() == 2; }));
    ASSERT_TRUE(sim.Invia(CodificaReport(4, 55, 66, 0)));
    ASSERT_TRUE(AttendiFinche([&] { return !reg.Notifiche().empty(); }));
    EXPECT_EQ(reg.Notifiche(), std::vector<TNotifica>{Mossa(55, 66)});
    d.StopCommNotification();
}

}  // namespace
