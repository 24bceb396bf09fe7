// The report path of every model: one full gather of the model's reports
// gathered, decoded and turned into a notification decision per iteration.
// A tablet at 9600 baud delivers under 1000 bytes a second, so a gather must
// stay far below a millisecond to keep up with ease.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "reports/digit_link.h"
#include "sim/tavoletta_pty.h"

namespace {

// Report length of each model, as its command sequence sets it.
constexpr std::int32_t lenModello[] = {0, 15, 40, 40, 40, 20, 40, 40, 15};

void GatherDelModello(benchmark::State& stato)
{
    const int tipo = static_cast<int>(stato.range(0));
    const std::string gather = TTavolettaPty::Raffica(tipo, {12345, 6789, 0}, lenModello[tipo]);
    AzzeraDigitLink(digitLink);
    Scrivi(digitLink.tipoReport, tipo);
    Scrivi(digitLink.lenReport, lenModello[tipo]);
    for (auto _ : stato) {
        std::memcpy(digitLink.bufLettura, gather.data(), gather.size());
        digitLink.numLetti = static_cast<std::int32_t>(gather.size());
        benchmark::DoNotOptimize(ProcessaReport(digitLink));
    }
    stato.SetLabel("model " + std::to_string(tipo));
    stato.counters["gathers/s"] = benchmark::Counter(static_cast<double>(stato.iterations()),
                                                     benchmark::Counter::kIsRate);
}
BENCHMARK(GatherDelModello)->DenseRange(1, 8);

}  // namespace
