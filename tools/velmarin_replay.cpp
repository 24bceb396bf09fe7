// velmarin-replay: plays a recorded stroke of each binary tablet model through
// the report path, without a port, and prints the notifications it gives.
//
//   velmarin-replay [model...]     models 1, 5, 8 (default: all three)
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "reports/digit_link.h"
#include "sim/codifica_report.h"
#include "tablet/catalogo.h"

namespace {

class TStampa : public CDigitNtfy {
public:
    int mosse = 0, pressioni = 0;
    void NotifyMove(std::int32_t x, std::int32_t y) override
    {
        ++mosse;
        std::printf("  move    x=%6d y=%6d\n", x, y);
    }
    void NotifyButton(std::int32_t b, std::int32_t x, std::int32_t y) override
    {
        ++pressioni;
        std::printf("  button %d x=%6d y=%6d\n", b, x, y);
    }
};

struct TStato {
    std::int32_t x, y;
    int bottone;
};

// A stroke round a square, with a press at two corners. The tablet repeats
// every state, as tablets do while the pointer rests.
std::vector<TStato> Tratto()
{
    std::vector<TStato> t;
    for (int i = 0; i <= 4; ++i) t.push_back({1000 + 250 * i, 1000, 0});
    t.push_back({2000, 1000, 1});
    t.push_back({2000, 1000, 1});
    for (int i = 1; i <= 4; ++i) t.push_back({2000, 1000 + 250 * i, 0});
    t.push_back({2000, 2000, 2});
    t.push_back({2000, 2000, 0});
    return t;
}

int LenReport(int tipo) { return tipo == 5 ? 20 : 15; }

void Riproduci(int tipo, TStampa& stampa)
{
    std::string flusso;
    for (const TStato& s : Tratto())
        for (int r = 0; r < 4; ++r) flusso += CodificaReport(tipo, s.x, s.y, s.bottone);

    AzzeraDigitLink(digitLink);
    Scrivi(digitLink.tipoReport, tipo);
    Scrivi(digitLink.lenReport, LenReport(tipo));
    Scrivi(digitLink.ntfy, &stampa);
    std::printf("model %d%s, %zu bytes\n", tipo, catalogoDigit[tipo].nome, flusso.size());

    const std::size_t passo = static_cast<std::size_t>(LenReport(tipo));
    for (std::size_t pos = 0; pos < flusso.size(); pos += passo) {
        const std::size_t n = std::min(passo, flusso.size() - pos);
        std::memcpy(digitLink.bufLettura, flusso.data() + pos, n);
        digitLink.numLetti = static_cast<std::int32_t>(n);
        ProcessaReport(digitLink);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<int> modelli;
    for (int i = 1; i < argc; ++i) {
        const int m = std::atoi(argv[i]);
        if (m != 1 && m != 5 && m != 8) {
            std::fprintf(stderr, "velmarin-replay: model %s is not a binary model (1, 5, 8)\n", argv[i]);
            return 2;
        }
        modelli.push_back(m);
    }
    if (modelli.empty()) modelli = {1, 5, 8};

    TStampa stampa;
    for (int m : modelli) Riproduci(m, stampa);
    std::printf("%d moves, %d presses\n", stampa.mosse, stampa.pressioni);
    return 0;
}
