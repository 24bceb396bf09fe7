// The eight models end to end through COM1, built for Linux and for Windows
// alike. A simulated tablet on a pseudo-terminal (sim_comandata) answers on
// standard input what this program asks of it on standard output; under Wine
// COM1 is that terminal, on Linux the port is mapped to it.
//
// For each model: connect, program the tablet (what reaches it is written to
// the transcript), play a stroke and check that every state becomes its
// notification, keep the poll chain of the polled model going, and close,
// failing if the close hangs. Then a port that does not exist, and a stream of
// raw bytes that must all arrive. The transcript of a run on Windows must
// equal the one on Linux: the wrapper compares them.
//
// On Windows, --coda-muta makes the port misreport as Wine has been seen to:
// ClearCommError says the queue is empty and WaitCommEvent gives a blank mask,
// whatever waits. The transcript must still be the same.
//
// usage: percorso_modelli [--coda-muta] TRANSCRIPT [DEVICE [MODELS]]
//   DEVICE: what COM1 is mapped to ("" for none); MODELS: e.g. "46", default all
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "digit.h"
#include "link/iodev.h"
#include "reports/digit_link.h"
#include "support/registratore.h"
#include "support/ripeti.h"
#include "support/utente_finto.h"
#include "tablet/catalogo.h"

#if defined(_WIN32)
#include "wine/coda_muta.h"
#endif

namespace {

using namespace std::chrono;

constexpr int portaTavoletta = 1;
constexpr int portaMancante = 2;
#if defined(_WIN32)
const char* const dispositivoMancante = "\\\\.\\COM250";
#else
const char* const dispositivoMancante = "/nonexistent/velmarin-tty";
#endif
// The close of a connection is over well within this; beyond it, it hangs.
constexpr milliseconds limiteChiusura(1500);
// What the tablet shows is heard well within this, even on a loaded machine
// under Wine; beyond it, it is lost.
constexpr milliseconds limiteAscolto(20000);

// The tablet across the pipes: one command, one answer.
std::string Chiedi(const std::string& comando)
{
    std::cout << comando << std::endl;
    std::string risposta;
    std::getline(std::cin, risposta);
    return risposta;
}

class TControlli {
public:
    explicit TControlli(std::ostream& trascrizione) : t(trascrizione) {}
    void Verifica(bool vero, const std::string& cosa)
    {
        if (vero) return;
        std::cerr << "FAIL " << cosa << "\n";
        t << "FAIL " << cosa << "\n";
        ++fallite;
    }
    std::ostream& t;
    int fallite = 0;
};

// Model `tipo` on `porta` with the catalogue's line settings, reset chosen and
// the first resolution. A pseudo-terminal keeps no parity, and Wine refuses a
// line with 8 data bits and parity on one, so model 6 goes without parity.
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

struct TStato {
    std::int32_t x, y;
    int bottone;
};

// Shows a pointer state as the tablet does, until the target has heard
// `quante` notifications in all. A repeated state adds nothing, so the
// repeats only make up for what a read merged or a poll missed.
std::string Comando(const TStato& s)
{
    std::ostringstream comando;
    comando << "stato " << s.x << " " << s.y << " " << s.bottone;
    return comando.str();
}

bool Suona(const TStato& s, const TRegistratore& reg, std::size_t quante)
{
    return RipetiFinche([&] { return reg.Notifiche().size() >= quante; }, [&] { Chiedi(Comando(s)); },
                        limiteAscolto);
}

// The close of a connected object, timed: reset off, so that only the close
// is measured.
void Chiudi(std::unique_ptr<CDigit> digit, TControlli& c, int tipo)
{
    digit->GetDataDigit().reset = 1;
    const auto inizio = steady_clock::now();
    digit.reset();
    const auto durata = duration_cast<milliseconds>(steady_clock::now() - inizio);
    c.Verifica(durata < limiteChiusura,
               "model " + std::to_string(tipo) + ": the close took " + std::to_string(durata.count()) + " ms");
}

// Model `tipo`, with `bottone` a second button its cursor has. False when a
// state of the stroke went unheard: the rest of it is not played.
bool Modello(int tipo, int bottone, TControlli& c)
{
    const std::string nome = "model " + std::to_string(tipo);
    const TStato tratto[] = {{1000, 2000, 0}, {1500, 2500, 0}, {1500, 2500, 1},
                             {1700, 2700, 0}, {1700, 2700, bottone}, {1800, 2800, 0}};
    Chiedi("modello " + std::to_string(tipo));
    auto digit = std::make_unique<CDigit>(Dati(tipo, portaTavoletta));
    c.t << nome << "\n";
    c.Verifica(digit->Init(nullptr), nome + ": Init");
    digit->SendInitString();
    c.t << "  programmed with: " << Chiedi("ricevuti") << "\n";

    TRegistratore host;
    std::vector<TNotifica> attese;
    bool sentite = true;
    if (tipo == 4) Chiedi(Comando(tratto[0]));  // the first poll goes out with the target
    c.Verifica(digit->SetCommNotificationTo(&host) == 1, nome + ": SetCommNotificationTo");
    for (const TStato& s : tratto) {
        attese.push_back(s.bottone ? Pressione(s.bottone, s.x, s.y) : Mossa(s.x, s.y));
        sentite = sentite && Suona(s, host, attese.size());
    }
    if (tipo == 4) {
        const int poll = std::stoi(Chiedi("poll"));
        const bool catena = AttendiFinche([&] { return std::stoi(Chiedi("poll")) >= poll + 5; }, limiteAscolto);
        c.Verifica(catena, nome + ": each answer to a poll brings the next poll");
    }
    digit->StopCommNotification();
    c.Verifica(sentite && host.Notifiche() == attese,
               nome + ": every state of the stroke is heard once (the tablet got: " + Chiedi("ricevuti") + ")");
    c.t << "  heard:";
    for (const TNotifica& n : host.Notifiche()) c.t << " " << n;
    c.t << "\n";
    Chiudi(std::move(digit), c, tipo);
    return sentite;
}

void PortaMancante(const TUtenteFinto& ui, TControlli& c)
{
    IODevMapPort(portaMancante, dispositivoMancante);
    CDigit digit(Dati(8, portaMancante));
    const std::size_t prima = ui.Messaggi().size();
    const bool aperta = digit.Init(nullptr);
    c.Verifica(!aperta, "a missing port does not open");
    c.t << "missing port: Init " << (aperta ? "true" : "false");
    const std::vector<TMessaggio> messaggi = ui.Messaggi();
    for (std::size_t i = prima; i < messaggi.size(); ++i) {
        const TMessaggio& m = messaggi[i];
        std::string testo;
        for (char ch : m.testo) testo += ch == '\n' ? std::string("\\n") : std::string(1, ch);
        c.t << ", box \"" << m.titolo << "\" \"" << testo << "\" flags " << m.flags;
    }
    for (unsigned b : ui.Beep()) c.t << ", beep " << b;
    c.t << "\n";
    IODevMapPort(portaMancante, nullptr);
}

// Raw bytes in two bursts, gathered with no report format, must all arrive
// in order: a port that reports its queue empty and its events blank while
// bytes wait must still deliver them.
void OgniByte(TControlli& c)
{
    constexpr std::size_t primi = 600, tutti = 1000;
    std::string flusso, hex;
    for (std::size_t i = 0; i < tutti; ++i) flusso += static_cast<char>((i * 7 + i / 256) & 0xFF);
    const auto Invia = [&](std::size_t da, std::size_t a) {
        std::string comando = "invia";
        char b[4];
        for (std::size_t i = da; i < a; ++i) {
            std::snprintf(b, sizeof b, " %02X", static_cast<unsigned char>(flusso[i]));
            comando += b;
        }
        return Chiedi(comando) == "ok";
    };
    const auto Raccolti = [] {
        TCancelloConsegna cancello;
        return static_cast<std::size_t>(digitLink.numAccum);
    };
    Chiedi("modello 8");
    auto digit = std::make_unique<CDigit>(Dati(8, portaTavoletta));
    c.Verifica(digit->Init(nullptr), "raw bytes: Init");
    Scrivi(digitLink.lenReport, dimBuffer);  // no format: the gather only grows
    c.Verifica(Invia(0, primi), "raw bytes: first burst sent");
    c.Verifica(AttendiFinche([&] { return Raccolti() >= primi; }, limiteAscolto), "raw bytes: the first burst arrives");
    c.Verifica(Invia(primi, tutti), "raw bytes: second burst sent");
    c.Verifica(AttendiFinche([&] { return Raccolti() >= tutti; }, limiteAscolto), "raw bytes: the second burst arrives");
    std::string raccolti;
    {
        TCancelloConsegna cancello;
        raccolti.assign(reinterpret_cast<const char*>(digitLink.bufReport), static_cast<std::size_t>(digitLink.numAccum));
    }
    c.Verifica(raccolti == flusso, "raw bytes: all of them, in order");
    c.t << "raw bytes: " << raccolti.size() << " of " << tutti << " gathered" << (raccolti == flusso ? ", in order" : "") << "\n";
    Chiudi(std::move(digit), c, 8);
}

// Takes the leading --coda-muta off the arguments; false if it cannot be had.
bool CodaMutaSeChiesta(int& argc, char**& argv)
{
    if (argc < 2 || std::string(argv[1]) != "--coda-muta") return true;
    --argc;
    ++argv;
#if defined(_WIN32)
    RendiCodaMuta();
    return true;
#else
    return false;
#endif
}

}  // namespace

int main(int argc, char** argv)
{
    if (!CodaMutaSeChiesta(argc, argv) || argc < 2) {
        std::cerr << "usage: percorso_modelli [--coda-muta] TRANSCRIPT [DEVICE [MODELS]]\n"
                     "  (--coda-muta on Windows only)\n";
        return 2;
    }
    std::ofstream trascrizione(argv[1], std::ios::binary);  // the same line ends everywhere
    if (argc > 2 && *argv[2]) IODevMapPort(portaTavoletta, argv[2]);
    const std::string modelli = argc > 3 ? argv[3] : "12345678";
    TUtenteFinto ui;
    TControlli c(trascrizione);
    const int secondoBottone[] = {0, 3, 3, 3, 10, 12, 12, 10, 4};
    for (char m : modelli)
        if (m >= '1' && m <= '8' && !Modello(m - '0', secondoBottone[m - '0'], c)) break;  // a deaf port
    PortaMancante(ui, c);
    OgniByte(c);
    Chiedi("fine");
    return c.fallite == 0 ? 0 : 1;
}
