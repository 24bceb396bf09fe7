// velmarin-replay: plays a recorded stroke of each tablet model through the
// report path, without a port, and prints the notifications it gives.
//
//   velmarin-replay [model...]     models 1 to 8 (default: all of them)
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

// The gather length of each model, as the init commands set it.
int LenReport(int tipo)
{
    static const int lunghezze[] = {0, 15, 40, 40, 40, 20, 40, 40, 15};
    return lunghezze[tipo];
}

// The reads the reader would hand over: a polled tablet (model 4) sends one
// line for each poll, so each of its reads is a line; the others stream, and
// a read is a gather's worth.
std::vector<std::string> Letture(int tipo)
{
    std::vector<std::string> letture;
    std::string flusso;
    for (const TStato& s : Tratto()) {
        const std::string report = CodificaReport(tipo, s.x, s.y, s.bottone);
        for (int r = 0; r < 4; ++r) {
            if (tipo == 4) letture.push_back(report);
            else flusso += report;
        }
    }
    const std::size_t passo = static_cast<std::size_t>(LenReport(tipo));
    for (std::size_t pos = 0; pos < flusso.size(); pos += passo) letture.push_back(flusso.substr(pos, passo));
    return letture;
}

void Riproduci(int tipo, TStampa& stampa)
{
    AzzeraDigitLink(digitLink);
    Scrivi(digitLink.tipoReport, tipo);
    Scrivi(digitLink.lenReport, LenReport(tipo));
    Scrivi(digitLink.ntfy, &stampa);
    const std::vector<std::string> letture = Letture(tipo);
    std::printf("model %d%s, %zu reads\n", tipo, catalogoDigit[tipo].nome, letture.size());

    for (const std::string& l : letture) {
        std::memcpy(digitLink.bufLettura, l.data(), l.size());
        digitLink.numLetti = static_cast<std::int32_t>(l.size());
        ProcessaReport(digitLink);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<int> modelli;
    for (int i = 1; i < argc; ++i) {
        const int m = std::atoi(argv[i]);
        if (m < 1 || m > 8) {
            std::fprintf(stderr, "velmarin-replay: model %s is not a tablet model (1 to 8)\n", argv[i]);
            return 2;
        }
        modelli.push_back(m);
    }
    if (modelli.empty()) modelli = {1, 2, 3, 4, 5, 6, 7, 8};

    TStampa stampa;
    for (int m : modelli) Riproduci(m, stampa);
    std::printf("%d moves, %d presses\n", stampa.mosse, stampa.pressioni);
    return 0;
}
