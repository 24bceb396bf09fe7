#include "link/ultimo_errore.h"

namespace {

struct TUltimoErrore {
    std::string testo;
    unsigned long codice = 0;
};

thread_local TUltimoErrore ultimo;

}  // namespace

void RegistraErrore(const std::string& testo, unsigned long codiceSistema) noexcept
{
    ultimo.codice = codiceSistema;
    try {
        ultimo.testo = testo;
    } catch (...) {
        ultimo.testo.clear();  // "" stands for a text that no memory was left for
    }
}

void RegistraErroreSistema(const std::string& testo, unsigned long codiceSistema) noexcept
{
    try {
        RegistraErrore(testo + ": " + DescrizioneSistema(codiceSistema), codiceSistema);
    } catch (...) {
        RegistraErrore(testo, codiceSistema);
    }
}

const char* TestoUltimoErrore() noexcept
{
    return ultimo.testo.empty() && ultimo.codice != 0 ? "out of memory" : ultimo.testo.c_str();
}

void RipristinaCodiceSistema() noexcept
{
    ImpostaCodiceSistema(ultimo.codice);
}
