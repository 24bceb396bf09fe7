// Latency of the reader: from a report written on the tablet's side of a
// pseudo-terminal to its NotifyMove on the host's target. Each iteration moves
// the pointer to a new place, so every report gives one notification.
#include <benchmark/benchmark.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "digit.h"
#include "sim/tavoletta_pty.h"

namespace {

class TContatore : public CDigitNtfy {
public:
    void NotifyMove(std::int32_t, std::int32_t) override
    {
        {
            std::lock_guard<std::mutex> g(mutex);
            ++mosse;
        }
        cv.notify_one();
    }
    void NotifyButton(std::int32_t, std::int32_t, std::int32_t) override {}

    bool Attendi(long quante)
    {
        std::unique_lock<std::mutex> g(mutex);
        return cv.wait_for(g, std::chrono::seconds(2), [&] { return mosse >= quante; });
    }

private:
    std::mutex mutex;
    std::condition_variable cv;
    long mosse = 0;
};

void BM_ReportFinoAllaNotifica(benchmark::State& state)
{
    TTavolettaPty sim(1);
    TDataDigit dati = CDigit().GetDataDigit();
    dati.tipo = 8;
    dati.porta = 1;
    dati.velocita = 9600;
    dati.parita = 'N';
    dati.bitDati = 8;
    dati.bitStop = 1;
    dati.reset = 1;
    CDigit digit(dati);
    if (!sim.Valida() || !digit.Init(nullptr)) {
        state.SkipWithError("no pseudo-terminal");
        return;
    }
    digit.SendInitString();
    TContatore target;
    digit.SetCommNotificationTo(&target);
    long attese = 0;
    std::int32_t x = 0;
    for (auto _ : state) {
        x = (x + 1) % 16000;
        ++attese;
        sim.InviaStato(8, {x, 100, 0}, 15);
        if (!target.Attendi(attese)) {
            state.SkipWithError("a report was not heard");
            break;
        }
    }
    digit.StopCommNotification();
}

BENCHMARK(BM_ReportFinoAllaNotifica)->Unit(benchmark::kMicrosecond);

}  // namespace
