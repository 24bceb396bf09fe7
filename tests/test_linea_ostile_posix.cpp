// A line that misbehaves (unplugged, flow-controlled): no crash,
// hang or spin, and the tablet served again once it is back.
#include <gtest/gtest.h>

#include <poll.h>

#include <chrono>
#include <memory>

#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/suona.h"
#include "support/tempo_lettore.h"

namespace {

using namespace std::chrono_literals;
constexpr int portaProva = 2;

class LineaOstileTest : public TProvaSuLinea {
protected:
    LineaOstileTest() : TProvaSuLinea(portaProva) {}
    TRegistratore reg;
};

// Unplugged, the slave reports a hang-up at every poll: the line is lost, the
// reader backs off, a new Init serves the tablet back, and destruction works.
TEST_F(LineaOstileTest, AnUnpluggedTabletLeavesNoBusyReaderAndCanComeBack)
{
    auto sim = std::make_unique<TTavolettaPty>(portaProva);
    auto d = std::make_unique<CDigit>(Dati(5));
    ASSERT_TRUE(sim->Valida() && Collega(*d, &reg));
    ASSERT_TRUE(SuonaFinoA(*sim, 5, {300, 400, 0}, 20, reg, 1));
    sim->Invia(std::string(7, '\x40'));  // half a report, then the cable goes
    sim.reset();
    EXPECT_TRUE(AttendiFinche([] { return IODevStatoLinea() == lineaPersa; })) << "the loss is not told";

    // A spinning reader burns 200 ms of processor well within 2 s.
    const auto prima = TempoLettore();
    EXPECT_FALSE(AttendiFinche([&] { return TempoLettore() - prima >= 200ms; }, 2s))
        << "the reader spins on the hang-up";

    d->StopCommNotification();
    sim = std::make_unique<TTavolettaPty>(portaProva);
    reg.Svuota();
    ASSERT_TRUE(sim->Valida() && Collega(*d, &reg));
    EXPECT_EQ(IODevStatoLinea(), lineaAperta);
    EXPECT_TRUE(SuonaFinoA(*sim, 5, {500, 600, 0}, 20, reg, 1));
    EXPECT_EQ(reg.Notifiche().front(), Mossa(500, 600));
    d->StopCommNotification();  // held, the reader no longer watches: the state asks the port
    EXPECT_EQ(IODevStatoLinea(), lineaAperta);
    sim.reset();
    EXPECT_TRUE(AttendiFinche([] { return IODevStatoLinea() == lineaPersa; })) << "a loss while held";
    ASSERT_TRUE(AttendiFinche([] {  // the port has seen the hang-up
        pollfd p{static_cast<int>(devInfo->hCom), POLLIN, 0};
        return poll(&p, 1, 0) == 1 && (p.revents & POLLHUP);
    }));
    d.reset();
    EXPECT_EQ(devInfo, nullptr);
}

// Model 6's XOFF holds the output, which gives up in time instead of hanging;
// flow-control bytes between reports never reach the decoder.

TEST_F(LineaOstileTest, FlowControlBytesOfModelSixNeitherHangNorCorrupt)
{
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    CDigit d(Dati(6));
    ASSERT_TRUE(d.Init(nullptr));
    // XOFF, then a byte that shows, once it is there to read, that the XOFF
    // before it was taken; the resume drops it.
    IODevHold();
    ASSERT_TRUE(sim.Invia("\x13" "Z"));
    ASSERT_TRUE(AttendiFinche([] { return InCoda() > 0; }));
    IODevResume();
    d.SendInitString();
    ASSERT_TRUE(sim.Invia("\x11"));  // XON
    ASSERT_EQ(d.SetCommNotificationTo(&reg), 1);
    std::string flusso = TTavolettaPty::Raffica(6, {12345, 6789, 0}, 40);
    flusso.insert(5, "\x13\x11");
    flusso.insert(20, "\x11");
    const bool sentito = RipetiFinche([&] { return !reg.Notifiche().empty(); }, [&] { sim.Invia(flusso); });
    d.StopCommNotification();
    ASSERT_TRUE(sentito);
    EXPECT_EQ(reg.Notifiche().front(), Mossa(12345, 6789));
}

}  // namespace
