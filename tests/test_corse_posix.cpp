// The races a host can run into, repeated many times under a tablet that
// never stops talking: a target freed right after the stop, an object
// destroyed while its reader notifies, a target that stops and restarts from
// inside its notification, a new object built under a running reader, which
// silences it. Meant for the sanitizer builds, which turn a lost race into a
// report.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "digit.h"
#include "link/iodev.h"
#include "reports/digit_link.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/registratore.h"
#include "support/suona.h"

namespace {

using namespace std::chrono_literals;
constexpr int portaProva = 5;

// A tablet whose pointer never rests: a new position every millisecond.
class TFlusso {
public:
    explicit TFlusso(TTavolettaPty& sim)
        : invio([this, &sim] {
              for (std::int32_t i = 0; !fine; ++i) {
                  sim.InviaStato(8, {i % 5000, (i * 7) % 5000, 0}, 15);
                  std::this_thread::sleep_for(1ms);
              }
          }) {}
    ~TFlusso() { fine = true; invio.join(); }

private:
    std::atomic<bool> fine{false};
    std::thread invio;
};

class CorseTest : public TProvaSuLinea {
protected:
    CorseTest() : TProvaSuLinea(portaProva) {}
    void SetUp() override { ASSERT_TRUE(sim.Valida()); }
    static bool Sentito(const TRegistratore& reg) { return AttendiNotifiche(reg, 1); }
    TTavolettaPty sim{portaProva};
};

// Each object hears three targets, each freed as soon as its stop returns,
// and is destroyed while its reader notifies a fourth.
TEST_F(CorseTest, TargetsAndObjectsMayGoAsSoonAsTheyAreDoneWith)
{
    TFlusso flusso(sim);
    for (int i = 0; i < 20; ++i) {
        auto d = std::make_unique<CDigit>(Dati(8));
        ASSERT_TRUE(d->Init(nullptr)) << "iteration " << i;
        d->SendInitString();
        for (int t = 0; t < 4; ++t) {
            auto reg = std::make_unique<TRegistratore>();
            d->SetCommNotificationTo(reg.get());
            ASSERT_TRUE(Sentito(*reg)) << "iteration " << i;
            if (t < 3)
                d->StopCommNotification();
            else
                d.reset();
        }
    }
    EXPECT_TRUE(ui.Messaggi().empty());
}

// Stops from inside each move it hears, and at once restarts if asked to.
struct TRiavvio : CDigitNtfy {
    explicit TRiavvio(CDigit& d) : digit(d) {}
    void NotifyMove(std::int32_t, std::int32_t) override
    {
        ++mosse;
        digit.StopCommNotification();
        if (riparte) digit.SetCommNotificationTo(this);
    }
    void NotifyButton(std::int32_t, std::int32_t, std::int32_t) override {}
    CDigit& digit;
    std::atomic<bool> riparte{false};
    std::atomic<int> mosse{0};
};

// A stop from inside the notification holds delivery: the stream goes on,
// the target hears nothing more. Then it stops and restarts, again and again.
TEST_F(CorseTest, ATargetMayStopAndRestartFromInsideItsNotification)
{
    CDigit d(Dati(8));
    ASSERT_TRUE(d.Init(nullptr));
    d.SendInitString();
    TRiavvio riavvio(d);
    TFlusso flusso(sim);
    d.SetCommNotificationTo(&riavvio);
    ASSERT_TRUE(AttendiFinche([&] { return riavvio.mosse > 0; }));
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(riavvio.mosse, 1);
    EXPECT_EQ(d.GetCommNotification(), nullptr);

    riavvio.riparte = true;
    d.SetCommNotificationTo(&riavvio);
    EXPECT_TRUE(AttendiFinche([&] { return riavvio.mosse > 50; }));
    d.StopCommNotification();
}

TEST_F(CorseTest, ANewObjectBuiltUnderARunningReaderSilencesIt)
{
    CDigit d(Dati(8));
    ASSERT_TRUE(d.Init(nullptr));
    TFlusso flusso(sim);
    for (int i = 0; i < 20; ++i) {
        d.SendInitString();  // the new object below silenced the link: program it again
        TRegistratore reg;
        d.SetCommNotificationTo(&reg);
        ASSERT_TRUE(Sentito(reg)) << "iteration " << i;
        { CDigit nuovo; }
        // The new object cleared the link under the reader: nothing more is decoded.
        EXPECT_EQ(Leggi(digitLink.lenReport), 0);
        EXPECT_EQ(d.GetCommNotification(), nullptr);
        std::this_thread::sleep_for(10ms);
        const std::size_t sentite = reg.Notifiche().size();
        std::this_thread::sleep_for(40ms);
        EXPECT_EQ(reg.Notifiche().size(), sentite) << "iteration " << i;
        d.StopCommNotification();
    }
}

}  // namespace
