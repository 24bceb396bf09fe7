// The reader on a pseudo-terminal. Its latency: from a report written on the
// tablet's side to its NotifyMove on the host's target, each iteration a new
// place, so every report gives one notification (mean, p50, p99): streaming
// (a full gather's worth at once, range 15) and a single report that only the
// quiet line after it closes (range 6, one report of model 8). Its cost at
// rest: the CPU time of the reader thread over 10 s of a quiet line and of
// held delivery, which must be near zero (no busy loop).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "digit.h"
#include "tablet/catalogo.h"
#include "bench/tempo_lettore.h"
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

// Model 8 on COM1, without a reset so that programming it costs no wait.
TDataDigit Numonics()
{
    TDataDigit dati = CDigit().GetDataDigit();
    ImpostaDaCatalogo(dati, 8);
    dati.porta = 1;
    dati.reset = 1;
    return dati;
}

// Connects `digit` to the simulated tablet; false, with the run marked, when
// the machine has no pseudo-terminal for it.
bool Collega(TTavolettaPty& sim, CDigit& digit, benchmark::State& state)
{
    if (sim.Valida() && digit.Init(nullptr)) return true;
    state.SkipWithError("no pseudo-terminal");
    return false;
}

double Percentile(std::vector<double> v, double p)
{
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v[static_cast<std::size_t>(p * static_cast<double>(v.size() - 1))];
}

void BM_ReportFinoAllaNotifica(benchmark::State& state)
{
    TTavolettaPty sim(1);
    CDigit digit(Numonics());
    if (!Collega(sim, digit, state)) return;
    digit.SendInitString();
    TContatore target;
    digit.SetCommNotificationTo(&target);
    long attese = 0;
    std::int32_t x = 0;
    std::vector<double> latenze;
    for (auto _ : state) {
        x = (x + 1) % 16000;
        ++attese;
        const auto inizio = std::chrono::steady_clock::now();
        sim.InviaStato(8, {x, 100, 0}, static_cast<std::size_t>(state.range(0)));
        if (!target.Attendi(attese)) {
            state.SkipWithError("a report was not heard");
            break;
        }
        latenze.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - inizio).count());
    }
    digit.StopCommNotification();
    state.counters["p50_us"] = Percentile(latenze, 0.50);
    state.counters["p99_us"] = Percentile(latenze, 0.99);
}

// One run of 10 s: the reader's CPU time on a line where nothing arrives,
// with delivery on (range 1) or held (range 0).
void BM_LettoreARiposo(benchmark::State& state)
{
    TTavolettaPty sim(1);
    CDigit digit(Numonics());
    if (!Collega(sim, digit, state)) return;
    TContatore target;
    if (state.range(0))
        digit.SetCommNotificationTo(&target);
    else
        digit.StopCommNotification();
    for (auto _ : state) {
        const auto prima = TempoLettore();
        std::this_thread::sleep_for(std::chrono::seconds(10));
        state.counters["reader_cpu_ms"] = std::chrono::duration<double, std::milli>(TempoLettore() - prima).count();
    }
    digit.StopCommNotification();
    state.SetLabel(state.range(0) ? "quiet line" : "held delivery");
}

BENCHMARK(BM_ReportFinoAllaNotifica)->Arg(15)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReportFinoAllaNotifica)->Arg(6)->Iterations(40)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LettoreARiposo)->Arg(1)->Arg(0)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
