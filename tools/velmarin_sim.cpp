// velmarin-sim: a simulated digitizing tablet of any of the eight models on a
// pseudo-terminal. It prints the device path on the first line of standard
// output, then plays the pointer until it is stopped (Ctrl-C) or its time is
// up, answering the polled model's polls, and can log what the host sends.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <csignal>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <mutex>
#include <string>
#include <thread>

#include "sim/percorsi.h"
#include "sim/riproduttore.h"
#include "sim/tavoletta_pty.h"
#include "tablet/catalogo.h"

namespace {

const char* const uso =
    "usage: velmarin-sim [--model N] [--figure | --walk [SEED] | --file PATH] [--once]\n"
    "                    [--step MS] [--log PATH|-] [--seconds S]\n"
    "\n"
    "A simulated tablet on a pseudo-terminal; the first line printed is its device.\n"
    "  --model N     tablet model 1 to 8 (default 5, Summa MicroGrid 3)\n"
    "  --figure      walk a square, pressing button 1 at each corner (default)\n"
    "  --walk SEED   a random walk with a press now and then (seed default 1)\n"
    "  --file PATH   play \"x y button\" lines; '#' starts a comment; from a pipe\n"
    "                or - (standard input) each line is played as soon as it comes\n"
    "  --once        play the path once, then rest (default: repeat; a file plays once)\n"
    "  --step MS     milliseconds between two states (default 50)\n"
    "  --log PATH    log every byte the host sends, in hex (- for standard error)\n"
    "  --seconds S   stop after S seconds (default: run until interrupted)\n";

volatile sig_atomic_t interrotto = 0;
void Interrompi(int) { interrotto = 1; }

struct TOpzioniSim {
    int tipo = 5;
    enum { figura, casuale, file } sorgente = figura;
    unsigned seme = 1;
    std::string percorsoFile, log;
    bool unaVolta = false;
    int passoMs = 50;
    double secondi = 0;
};

bool Intero(const char* s, long minimo, long massimo, long& valore)
{
    char* fine = nullptr;
    valore = std::strtol(s, &fine, 10);
    return *s && *fine == '\0' && valore >= minimo && valore <= massimo;
}

// Returns -1 to go on, else the exit code.
int Analizza(int argc, char** argv, TOpzioniSim& o)
{
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        const bool haValore = i + 1 < argc;
        long v = 0;
        if (a == "--help" || a == "-h") {
            std::fputs(uso, stdout);
            return 0;
        } else if (a == "--model" && haValore) {
            if (!Intero(argv[++i], 1, 8, v)) {
                std::fprintf(stderr, "velmarin-sim: model %s is not a tablet model (1 to 8)\n", argv[i]);
                return 2;
            }
            o.tipo = static_cast<int>(v);
        } else if (a == "--figure") {
            o.sorgente = TOpzioniSim::figura;
        } else if (a == "--walk") {
            o.sorgente = TOpzioniSim::casuale;
            if (haValore && Intero(argv[i + 1], 0, 1L << 30, v)) o.seme = static_cast<unsigned>(v), ++i;
        } else if (a == "--file" && haValore) {
            o.sorgente = TOpzioniSim::file;
            o.percorsoFile = argv[++i];
        } else if (a == "--once") {
            o.unaVolta = true;
        } else if (a == "--step" && haValore) {
            if (!Intero(argv[++i], 1, 10000, v)) {
                std::fprintf(stderr, "velmarin-sim: step %s is not 1 to 10000 ms\n", argv[i]);
                return 2;
            }
            o.passoMs = static_cast<int>(v);
        } else if (a == "--log" && haValore) {
            o.log = argv[++i];
        } else if (a == "--seconds" && haValore) {
            o.secondi = std::atof(argv[++i]);
            if (o.secondi <= 0) {
                std::fprintf(stderr, "velmarin-sim: seconds must be more than 0\n");
                return 2;
            }
        } else {
            std::fprintf(stderr, "velmarin-sim: unknown or incomplete option %s\n%s", a.c_str(), uso);
            return 2;
        }
    }
    return -1;
}

// One line per chunk the host sent: time since start, hex, printable text.
class TRegistroHost {
public:
    explicit TRegistroHost(std::FILE* f) : file(f), inizio(std::chrono::steady_clock::now()) {}
    void operator()(const std::uint8_t* byte, std::size_t quanti)
    {
        const double t = std::chrono::duration<double>(std::chrono::steady_clock::now() - inizio).count();
        std::string hex, testo;
        char b[4];
        for (std::size_t i = 0; i < quanti; ++i) {
            std::snprintf(b, sizeof b, "%02X ", byte[i]);
            hex += b;
            testo += std::isprint(byte[i]) ? static_cast<char>(byte[i]) : '.';
        }
        std::lock_guard<std::mutex> g(mutex);
        std::fprintf(file, "+%8.3fs host sent %zu: %s |%s|\n", t, quanti, hex.c_str(), testo.c_str());
        std::fflush(file);
    }

private:
    std::FILE* file;
    std::chrono::steady_clock::time_point inizio;
    std::mutex mutex;
};

// A file that is a pipe, or standard input, is played as it comes.
bool Flusso(const TOpzioniSim& o)
{
    struct stat st {};
    return o.sorgente == TOpzioniSim::file &&
           (o.percorsoFile == "-" || (stat(o.percorsoFile.c_str(), &st) == 0 && S_ISFIFO(st.st_mode)));
}

bool Percorso(const TOpzioniSim& o, TPercorso& p)
{
    switch (o.sorgente) {
    case TOpzioniSim::figura:
        p = Figura();
        return true;
    case TOpzioniSim::casuale:
        p = PasseggiataCasuale(o.seme, 100000);
        return true;
    case TOpzioniSim::file: {
        if (Flusso(o)) return true;  // see Ascolta
        std::ifstream in(o.percorsoFile);
        std::string errore;
        if (!in) {
            std::fprintf(stderr, "velmarin-sim: cannot read %s\n", o.percorsoFile.c_str());
            return false;
        }
        if (!LeggiPercorso(in, p, errore)) {
            std::fprintf(stderr, "velmarin-sim: %s: %s\n", o.percorsoFile.c_str(), errore.c_str());
            return false;
        }
        return true;
    }
    }
    return false;
}

// Plays the lines of the pipe as they come, on a thread of its own that ends
// with the input; a bad line is reported and skipped.
void Ascolta(const std::string& percorso, TRiproduttore& riproduttore)
{
    std::thread([percorso, &riproduttore] {
        std::ifstream file;
        if (percorso != "-") file.open(percorso);
        std::istream& ingresso = percorso == "-" ? std::cin : file;
        std::string riga;
        for (int numero = 1; std::getline(ingresso, riga); ++numero) {
            std::istringstream in(riga);
            TPercorso stati;
            std::string errore;
            if (LeggiPercorso(in, stati, errore)) riproduttore.Accoda(stati);
            else std::fprintf(stderr, "velmarin-sim: %s, line %d: %s\n", percorso.c_str(), numero, errore.c_str());
        }
    }).detach();
}

}  // namespace

int main(int argc, char** argv)
{
    TOpzioniSim o;
    const int esito = Analizza(argc, argv, o);
    if (esito >= 0) return esito;
    TPercorso percorso;
    if (!Percorso(o, percorso)) return 1;

    std::FILE* log = nullptr;
    if (o.log == "-") log = stderr;
    else if (!o.log.empty() && !(log = std::fopen(o.log.c_str(), "w"))) {
        std::fprintf(stderr, "velmarin-sim: cannot write %s\n", o.log.c_str());
        return 1;
    }

    TTavolettaPty tavoletta(0);
    if (!tavoletta.Valida()) {
        std::fprintf(stderr, "velmarin-sim: cannot open a pseudo-terminal\n");
        return 1;
    }
    TRegistroHost registro(log ? log : stderr);
    if (log) tavoletta.Ascolta([&registro](const std::uint8_t* b, std::size_t n) { registro(b, n); });

    std::signal(SIGINT, Interrompi);
    std::signal(SIGTERM, Interrompi);
    std::printf("%s\n", tavoletta.PercorsoSlave().c_str());
    std::fflush(stdout);
    std::fprintf(stderr, "velmarin-sim: model %d (%s) on %s\n", o.tipo, catalogoDigit[o.tipo].nome + 1,
                 tavoletta.PercorsoSlave().c_str());

    TRiproduttore riproduttore(tavoletta, o.tipo, std::chrono::milliseconds(o.passoMs));
    riproduttore.Percorso(percorso, !o.unaVolta && o.sorgente != TOpzioniSim::file);
    riproduttore.Avvia();
    if (Flusso(o)) Ascolta(o.percorsoFile, riproduttore);
    const auto fine = std::chrono::steady_clock::now() + std::chrono::duration<double>(o.secondi);
    while (!interrotto && (o.secondi <= 0 || std::chrono::steady_clock::now() < fine))
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    riproduttore.Ferma();
    tavoletta.Ascolta(nullptr);
    if (log && log != stderr) std::fclose(log);
    return 0;
}
