// The eight models end to end through COM1 on sim_comandata (asked on standard
// output, answering on standard input): connect, program, a stroke heard
// whole, the poll chain, a timely close; then raw bytes.
// The transcript must be the same on Windows as on Linux. --coda-muta makes
// the port misreport as Wine has been seen to (coda_muta_win32.cpp).
// usage: percorso_modelli [--coda-muta] TRANSCRIPT [DEVICE]
//   DEVICE: what COM1 is mapped to, if anything
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "digit.h"
#include "link/iodev.h"
#include "reports/digit_link.h"
#include "support/registratore.h"
#include "support/ripeti.h"
#include "support/utente_finto.h"
#include "tablet/catalogo.h"

void RendiCodaMuta();  // Windows only, before a port opens

namespace {

using namespace std::chrono;

constexpr int portaTavoletta = 1;
// The close of a connection is over well within this; beyond it, it hangs.
constexpr milliseconds limiteChiusura(1500);
// What the tablet shows is heard well within this, even loaded under Wine.
constexpr milliseconds limiteAscolto(20000);

// The tablet across the pipes: one command, one answer.
std::string Chiedi(const std::string& comando)
{
    std::cout << comando << std::endl;
    std::string risposta;
    std::getline(std::cin, risposta);
    return risposta;
}

std::ofstream trascrizione;
int fallite = 0;

// A failed check goes to the transcript too, so that the runs differ.
void Verifica(bool vero, const std::string& cosa)
{
    if (vero) return;
    std::cerr << "FAIL " << cosa << "\n";
    trascrizione << "FAIL " << cosa << "\n";
    ++fallite;
}

// Model `tipo` on `porta` as catalogued, reset chosen, first resolution; model
// 6 without parity, which Wine refuses with 8 data bits on a pseudo-terminal.
TDataDigit Dati(int tipo, int porta)
{
    TDataDigit d = CDigit().GetDataDigit();
    ImpostaDaCatalogo(d, tipo);
    d.tipo = static_cast<std::int16_t>(tipo);
    d.porta = static_cast<std::int16_t>(porta);
    d.reset = 2;
    d.risoluzione = 1;
    if (tipo == 6) d.parita = 'N';
    return d;
}

// Shows a state until the target has heard `quante` notifications in all
// (repeats add nothing; they make up for merged reads and missed polls).
bool Suona(const TNotifica& s, const TRegistratore& reg, std::size_t quante)
{
    const std::string comando =
        "stato " + std::to_string(s.x) + " " + std::to_string(s.y) + " " + std::to_string(s.bottone);
    return RipetiFinche([&] { return reg.Notifiche().size() >= quante; }, [&] { Chiedi(comando); }, limiteAscolto);
}

// The close of a connected object, timed (reset off: only the close counts).
void Chiudi(std::unique_ptr<CDigit> digit, int tipo)
{
    digit->GetDataDigit().reset = 1;
    const auto inizio = steady_clock::now();
    digit.reset();
    const auto durata = duration_cast<milliseconds>(steady_clock::now() - inizio);
    Verifica(durata < limiteChiusura,
               "model " + std::to_string(tipo) + ": the close took " + std::to_string(durata.count()) + " ms");
}

// Model `tipo`, `bottone` a second button of its cursor; false when a state went unheard.
bool Modello(int tipo, int bottone)
{
    const std::string nome = "model " + std::to_string(tipo);
    const std::vector<TNotifica> tratto = {Mossa(1000, 2000), Mossa(1500, 2500), Pressione(1, 1500, 2500),
                                           Mossa(1700, 2700), Pressione(bottone, 1700, 2700), Mossa(1800, 2800)};
    Chiedi("modello " + std::to_string(tipo));
    auto digit = std::make_unique<CDigit>(Dati(tipo, portaTavoletta));
    trascrizione << nome << "\n";
    Verifica(digit->Init(nullptr), nome + ": Init");
    digit->SendInitString();
    trascrizione << "  programmed with: " << Chiedi("ricevuti") << "\n";

    TRegistratore host;
    if (tipo == 4) Chiedi("stato 1000 2000 0");  // the first poll goes out with the target
    Verifica(digit->SetCommNotificationTo(&host) == 1, nome + ": SetCommNotificationTo");
    std::size_t sentite = 0;
    while (sentite < tratto.size() && Suona(tratto[sentite], host, sentite + 1)) ++sentite;
    if (tipo == 4) {
        const int poll = std::stoi(Chiedi("poll"));
        const bool catena = AttendiFinche([&] { return std::stoi(Chiedi("poll")) >= poll + 5; }, limiteAscolto);
        Verifica(catena, nome + ": each answer to a poll brings the next poll");
    }
    digit->StopCommNotification();
    Verifica(host.Notifiche() == tratto,
               nome + ": every state of the stroke is heard once (the tablet got: " + Chiedi("ricevuti") + ")");
    trascrizione << "  heard:";
    for (const TNotifica& n : host.Notifiche()) trascrizione << " " << n;
    trascrizione << "\n";
    Chiudi(std::move(digit), tipo);
    return sentite == tratto.size();
}

std::string Raccolti()
{
    TCancelloConsegna cancello;
    return std::string(reinterpret_cast<const char*>(digitLink.bufReport), static_cast<std::size_t>(digitLink.numAccum));
}

// Raw bytes in two bursts, with no format, all arrive in order, even from a
// port that reports its queue empty while bytes wait.

void OgniByte()
{
    std::string flusso;
    for (std::size_t i = 0; i < 1000; ++i) flusso += static_cast<char>((i * 7 + i / 256) & 0xFF);
    Chiedi("modello 8");
    auto digit = std::make_unique<CDigit>(Dati(8, portaTavoletta));
    Verifica(digit->Init(nullptr), "raw bytes: Init");
    Scrivi(digitLink.lenReport, dimBuffer);  // no format: the gather only grows
    std::size_t da = 0;
    for (std::size_t fine : {600, 1000}) {
        std::string comando = "invia";
        char b[4];
        for (std::size_t i = da; i < fine; ++i) {
            std::snprintf(b, sizeof b, " %02X", static_cast<unsigned char>(flusso[i]));
            comando += b;
        }
        Verifica(Chiedi(comando) == "ok", "raw bytes: a burst sent");
        Verifica(AttendiFinche([&] { return Raccolti().size() >= fine; }, limiteAscolto), "raw bytes: the burst arrives");
        da = fine;
    }
    const std::string raccolti = Raccolti();
    Verifica(raccolti == flusso, "raw bytes: all of them, in order");
    trascrizione << "raw bytes: " << raccolti.size() << " of " << flusso.size() << " gathered"
        << (raccolti == flusso ? ", in order" : "") << "\n";
    Chiudi(std::move(digit), 8);
}

}  // namespace

int main(int argc, char** argv)
{
    const bool codaMuta = argc > 1 && std::string(argv[1]) == "--coda-muta";
    argc -= codaMuta;
    argv += codaMuta;
#if defined(_WIN32)
    if (codaMuta) RendiCodaMuta();
#else
    if (codaMuta) argc = 0;
#endif
    if (argc < 2) {
        std::cerr << "usage: percorso_modelli [--coda-muta] TRANSCRIPT [DEVICE] (--coda-muta on Windows only)\n";
        return 2;
    }
    trascrizione.open(argv[1], std::ios::binary);  // the same line ends everywhere
    if (argc > 2) IODevMapPort(portaTavoletta, argv[2]);
    TUtenteFinto ui;
    const int secondoBottone[] = {0, 3, 3, 3, 10, 12, 12, 10, 4};
    for (int m = 1; m <= 8; ++m)
        if (!Modello(m, secondoBottone[m])) break;  // a deaf port
    OgniByte();
    Chiedi("fine");
    return fallite == 0 ? 0 : 1;
}
