// Speed of the grid map on the largest grid, 21 by 21 squares: points that
// fall inside a cell, points outside the grid (served by the nearest cell),
// and the fit of all 441 cells.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "digit.h"
#include "tests/support/digit_accesso.h"
#include "tests/support/griglia_prova.h"
#include "tablet/tabelle.h"

namespace {

constexpr std::int32_t lato = 500;

struct TPunto {
    std::int32_t x, y;
};

// Points spread over the whole grid, or in a band around it.
std::vector<TPunto> Punti(bool dentro)
{
    std::mt19937 gen(7);
    std::vector<TPunto> punti;
    const std::int32_t estensione = maxQuadrati * lato;
    std::uniform_int_distribution<std::int32_t> inGriglia(2100, 2000 + estensione - 100);
    std::uniform_int_distribution<std::int32_t> fuori(-estensione, 0);
    for (int k = 0; k < 4096; ++k) {
        if (dentro)
            punti.push_back({inGriglia(gen), inGriglia(gen) - 500});
        else
            punti.push_back({fuori(gen), inGriglia(gen)});
    }
    return punti;
}

void Trasforma(benchmark::State& state, bool dentro)
{
    CDigit d;
    if (!CalibraDaNodi(d, GrigliaScossa(maxQuadrati, maxQuadrati, lato, 40, 1))) {
        state.SkipWithError("grid fit failed");
        return;
    }
    const std::vector<TPunto> punti = Punti(dentro);
    std::size_t k = 0;
    for (auto _ : state) {
        const TPunto& p = punti[k++ & 4095];
        double est = 0.0, nord = 0.0;
        benchmark::DoNotOptimize(d.CalcoloCoordTrasfCalibrFine(p.x, p.y, est, nord));
        benchmark::DoNotOptimize(est);
        benchmark::DoNotOptimize(nord);
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_TrasformaPuntiNelleCelle(benchmark::State& state) { Trasforma(state, true); }
void BM_TrasformaPuntiFuoriGriglia(benchmark::State& state) { Trasforma(state, false); }

void BM_CoefficientiOmog441Celle(benchmark::State& state)
{
    CDigit d;
    const TNodi nodi = GrigliaScossa(maxQuadrati, maxQuadrati, lato, 40, 1);
    for (auto _ : state) benchmark::DoNotOptimize(CalibraDaNodi(d, nodi));
    state.SetItemsProcessed(state.iterations() * maxQuadrati * maxQuadrati);
}

}  // namespace

BENCHMARK(BM_TrasformaPuntiNelleCelle);
BENCHMARK(BM_TrasformaPuntiFuoriGriglia);
BENCHMARK(BM_CoefficientiOmog441Celle);
