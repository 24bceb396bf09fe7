// The report path of the text tablets: one full gather gathered and decoded
// per iteration. A tablet at 9600 baud delivers under 1000 bytes a second,
// so a decode must stay far below 40 microseconds to keep up with ease.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "reports/digit_link.h"

namespace {

struct TGather {
    int formato;
    const char* byte;
};

// A gather of each text model, cut at an arbitrary place of the stream.
const TGather gathers[] = {
    {2, "0,3\r\n00123,00456,1\r\n00123,00456,1\r\n00123"},
    {3, "0,3\r\n00150,00250,4\r\n00150,00250,4\r\n00150"},
    {4, "@D3+00123-00456\r\n"},
    {6, "456\r@A,00123,00456\r@A,00123,00456\r@A,001"},
    {7, "90\r\nAB101234567890\r\nAB101234567890\r\nAB10"},
};

void DecodificaGather(benchmark::State& stato)
{
    const TGather& g = gathers[stato.range(0)];
    const std::size_t n = std::strlen(g.byte);
    AzzeraDigitLink(digitLink);
    Scrivi(digitLink.tipoReport, g.formato);
    Scrivi(digitLink.lenReport, 40);
    for (auto _ : stato) {
        std::memcpy(digitLink.bufLettura, g.byte, n);
        digitLink.numLetti = static_cast<std::int32_t>(n);
        benchmark::DoNotOptimize(ProcessaReport(digitLink));
    }
    stato.SetLabel("format " + std::to_string(g.formato));
    stato.SetBytesProcessed(static_cast<std::int64_t>(stato.iterations()) * static_cast<std::int64_t>(n));
}
BENCHMARK(DecodificaGather)->DenseRange(0, 4);

}  // namespace
