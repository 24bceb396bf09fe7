// A line that misbehaves: the tablet unplugged in the middle of a stream, a
// flood of noise, flow-control bytes inside reports. The library must
// neither crash nor hang nor spin, and must serve the tablet again once it is
// back.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <thread>

#include "digit.h"
#include "link/iodev.h"
#include "link/iodev_info.h"
#include "reports/digit_link.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/registratore.h"
#include "support/suona.h"
#include "support/tempo_lettore.h"

namespace {

using namespace std::chrono_literals;
using Orologio = std::chrono::steady_clock;
constexpr int portaProva = 2;

class LineaOstileTest : public TProvaSuLinea {
protected:
    LineaOstileTest() : TProvaSuLinea(portaProva) {}
};

// Unplugged: the slave of a closed master reports a hang-up at every poll.
// The reader must back off instead of spinning, and everything around it must
// still work; a tablet plugged back in is served by a new Init, and an object
// whose tablet is gone again can still be destroyed.
TEST_F(LineaOstileTest, AnUnpluggedTabletLeavesNoBusyReaderAndCanComeBack)
{
    auto sim = std::make_unique<TTavolettaPty>(portaProva);
    ASSERT_TRUE(sim->Valida());
    auto d = std::make_unique<CDigit>(Dati(5));
    ASSERT_TRUE(d->Init(nullptr));
    d->SendInitString();
    TRegistratore reg;
    ASSERT_EQ(d->SetCommNotificationTo(&reg), 1);
    ASSERT_TRUE(SuonaFinoA(*sim, 5, {300, 400, 0}, 20, reg, 1));
    sim->Invia(std::string(7, '\x40'));  // half a report, then the cable goes
    sim.reset();

    const auto prima = TempoLettore();
    std::this_thread::sleep_for(2s);
    const auto cpu = TempoLettore() - prima;
    std::printf("reader CPU over 2 s on an unplugged line: %.2f ms\n", cpu.count() / 1e6);
    EXPECT_LT(cpu, 200ms) << "the reader spins on the hang-up";

    d->StopCommNotification();
    sim = std::make_unique<TTavolettaPty>(portaProva);
    ASSERT_TRUE(sim->Valida());
    ASSERT_TRUE(d->Init(nullptr));
    d->SendInitString();
    reg.Svuota();
    ASSERT_EQ(d->SetCommNotificationTo(&reg), 1);
    EXPECT_TRUE(SuonaFinoA(*sim, 5, {500, 600, 0}, 20, reg, 1));
    EXPECT_EQ(reg.Notifiche().front(), Mossa(500, 600));
    sim.reset();
    std::this_thread::sleep_for(50ms);
    d.reset();
    EXPECT_EQ(devInfo, nullptr);
}

// Noise at about 100 KB/s for 10 s: whatever is decoded stays in the
// format's range, nothing crashes, and the tablet is heard right after.
TEST_F(LineaOstileTest, AFloodOfNoiseIsSurvivedAndTheTabletHeardAfter)
{
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    CDigit d(Dati(8));
    ASSERT_TRUE(d.Init(nullptr));
    d.SendInitString();
    TRegistratore reg;
    ASSERT_EQ(d.SetCommNotificationTo(&reg), 1);

    std::mt19937 caso(7);
    std::string blocco(1000, '\0');
    const auto fine = Orologio::now() + 10s;
    for (auto prossimo = Orologio::now(); prossimo < fine; prossimo += 10ms) {
        for (char& c : blocco) c = static_cast<char>(caso());
        ASSERT_TRUE(sim.Invia(blocco));
        std::this_thread::sleep_until(prossimo);
    }
    for (const TNotifica& n : reg.Notifiche())
        EXPECT_TRUE(n.x >= 0 && n.x <= 65535 && n.y >= 0 && n.y <= 65535 && n.bottone >= 0 && n.bottone <= 4) << n;
    const std::size_t dopoRumore = reg.Notifiche().size();
    EXPECT_TRUE(SuonaFinoA(sim, 8, {1234, 4321, 0}, 15, reg, dopoRumore + 1));
    EXPECT_EQ(reg.Notifiche().back(), Mossa(1234, 4321));
    d.StopCommNotification();
}

// Model 6 runs with XON/XOFF: a stop byte from the tablet holds the library's
// output, which must then give up within its time limit instead of hanging,
// and flow-control bytes between reports never reach the decoder.
TEST_F(LineaOstileTest, FlowControlBytesOfModelSixNeitherHangNorCorrupt)
{
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    CDigit d(Dati(6));
    ASSERT_TRUE(d.Init(nullptr));
    ASSERT_TRUE(sim.Invia("\x13"));  // XOFF: the tablet's buffer is full
    std::this_thread::sleep_for(50ms);
    d.SendInitString();
    ASSERT_TRUE(sim.Invia("\x11"));  // XON

    TRegistratore reg;
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
