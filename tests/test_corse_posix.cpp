// Races under a tablet that never stops talking; the sanitizer builds report a lost one.

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <chrono>
#include <thread>

#include "sim/tavoletta_pty.h"
#include "support/digit_accesso.h"
#include "support/prova_su_linea.h"
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
    TTavolettaPty sim{portaProva};
};

// Stops from inside each move it hears, and at once restarts while asked to.
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
    std::atomic<bool> riparte{true};
    std::atomic<int> mosse{0};
};

TEST_F(CorseTest, ATargetMayStopAndRestartFromInsideItsNotification)
{
    CDigit d(Dati(8));
    TRiavvio riavvio(d);
    ASSERT_TRUE(Collega(d, &riavvio));
    TFlusso flusso(sim);
    EXPECT_TRUE(AttendiFinche([&] { return riavvio.mosse > 50; }));
    riavvio.riparte = false;
    EXPECT_TRUE(AttendiFinche([&] { return d.GetCommNotification() == nullptr; }));
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
        ASSERT_TRUE(AttendiNotifiche(reg, 1)) << "iteration " << i;
        { CDigit nuovo; }
        // The new object cleared the link under the reader: nothing more is decoded.
        EXPECT_EQ(Leggi(digitLink.lenReport), 0);
        EXPECT_EQ(d.GetCommNotification(), nullptr);
        d.StopCommNotification();
    }
}

// A target that transforms every move; the map is East = 500 + x / 10, North = 200 + y / 10.
struct TTrasforma : CDigitNtfy {
    explicit TTrasforma(CDigit& d) : digit(d) {}
    void NotifyMove(std::int32_t x, std::int32_t y) override
    {
        double est = 0, nord = 0;
        int bottone = 0;
        if (!digit.TrasformaCoordDigit(est, nord, bottone)) {
            ++prima;
            return;
        }
        if (std::abs(est - (500 + 0.1 * x)) > 1e-6 || std::abs(nord - (200 + 0.1 * y)) > 1e-6) ++sbagliate;
        ++dopo;
    }
    void NotifyButton(std::int32_t, std::int32_t, std::int32_t) override {}
    CDigit& digit;
    std::atomic<int> prima{0}, dopo{0}, sbagliate{0};
};

// A transform that sees the host's new calibration state sees its new coefficients too.
TEST_F(CorseTest, ACalibrationReachesATransformingTargetWhole)
{
    CDigit d(Dati(8, 1));
    TTrasforma target(d);
    ASSERT_TRUE(Collega(d, &target));
    {
        TFlusso flusso(sim);
        ASSERT_TRUE(AttendiFinche([&] { return target.prima > 0; }));
        double x[] = {0, 1000, 0}, y[] = {0, 0, 1000}, est[] = {500, 600, 500}, nord[] = {200, 200, 300};
        ASSERT_TRUE(CDigitTestAccess::CalcoloCoefficientiPtSparsi(d, x, y, est, nord, 3));
        ASSERT_TRUE(AttendiFinche([&] { return target.dopo > 0; }));
    }
    d.StopCommNotification();
    EXPECT_EQ(target.sbagliate, 0);
}

}  // namespace
