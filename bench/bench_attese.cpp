// The fixed waits of the command sequences on the real tick: the processor
// time the host's thread spends in a wait of 300 ms, which must be a small
// part of it (the wait yields between reads of the tick instead of spinning).
#include <benchmark/benchmark.h>

#include <time.h>

#include <chrono>

#include "digit.h"
#include "tests/support/digit_accesso.h"

namespace {

std::chrono::nanoseconds TempoCpu()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return std::chrono::seconds(t.tv_sec) + std::chrono::nanoseconds(t.tv_nsec);
}

void BM_AttesaComandi(benchmark::State& state)
{
    CDigit d;
    std::chrono::nanoseconds cpu{};
    for (auto _ : state) {
        const auto prima = TempoCpu();
        CDigitTestAccess::Ritarda(d, 300);
        cpu += TempoCpu() - prima;
    }
    state.counters["cpu_ms_per_wait"] =
        std::chrono::duration<double, std::milli>(cpu).count() / static_cast<double>(state.iterations());
}

}  // namespace

BENCHMARK(BM_AttesaComandi)->Iterations(3)->Unit(benchmark::kMillisecond);
