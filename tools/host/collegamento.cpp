#include "collegamento.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "digit.h"
#include "link/elenco_porte.h"
#include "record_predefiniti.h"

namespace {

// A terminal that is no line to a tablet: the pseudo-terminal multiplexer,
// which hands out a new master at each open, a master itself, or the
// console and controlling terminal (major 5), or a virtual console (major 4
// below 64, where the serial ports begin).
bool LineaVera(int fd, const struct stat& st)
{
    unsigned numero = 0;
    if (ioctl(fd, TIOCGPTN, &numero) == 0) return false;
    const unsigned maggiore = major(st.st_rdev), minore = minor(st.st_rdev);
    return maggiore != 5 && !(maggiore == 4 && minore < 64);
}

}  // namespace

bool VerificaDispositivo(const std::string& percorso, std::string& errore)
{
    struct stat st {};
    if (stat(percorso.c_str(), &st) != 0) {
        errore = "no device at " + percorso + " (" + std::strerror(errno) + ")";
        return false;
    }
    const int fd = open(percorso.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        errore = errno == EBUSY ? percorso + " is busy: another program holds it"
                                : "cannot open " + percorso + " (" + std::strerror(errno) + ")";
        return false;
    }
    // The library takes the same lock when it opens the port.
    bool ok = true;
    if (flock(fd, LOCK_EX | LOCK_NB) != 0) {
        errore = percorso + " is busy: another program holds it";
        ok = false;
    } else if (!isatty(fd) || !LineaVera(fd, st)) {
        errore = percorso + " is not a serial line (nor the slave side of a pseudo-terminal)";
        ok = false;
    }
    close(fd);  // the lock goes with it
    return ok;
}

namespace {

// The library's open keeps out later opens, not a program that had the
// device open already: a modem manager or a forgotten terminal program goes
// on reading and takes the tablet's bytes, and the tablet seems silent.
void AvvisaOccupante(const std::string& percorso)
{
    TPortaElencata p;
    p.dispositivo = percorso;
    Occupazione(p);
    if (p.occupata)
        std::fprintf(stderr, "velmarin-host: warning: %s is also held open by %s, which may take the tablet's bytes\n",
                     percorso.c_str(), p.occupante.c_str());
}

}  // namespace

bool TCollegamento::Prepara(const TOpzioniHost& o, std::chrono::milliseconds p, std::string& errore)
{
    passo = p;
    if (!o.dispositivo.empty()) {
        if (!VerificaDispositivo(o.dispositivo, errore)) return false;
        AvvisaOccupante(o.dispositivo);
        IODevMapPort(o.porta, o.dispositivo.c_str());
        dispositivo = o.dispositivo;
        portaDispositivo = o.porta;
    } else {
        simulata = std::make_unique<TTavolettaPty>(o.porta);
        if (!simulata->Valida()) {
            errore = "cannot open a pseudo-terminal for the simulated tablet";
            simulata.reset();
            return false;
        }
        // Whichever port the user chooses, the built-in tablet is on it.
        for (int porta = 1; porta <= 4; ++porta) IODevMapPort(porta, simulata->PercorsoSlave().c_str());
    }
    Segui(Record(o));
    return true;
}

void TCollegamento::Riproduci(int t)
{
    riproduttore.reset();
    tipo = t;
    if (!simulata || tipo < 1 || tipo > 8) return;
    riproduttore = std::make_unique<TRiproduttore>(*simulata, tipo, passo);
    if (!inCalibrazione) riproduttore->Percorso(FiguraGriglia(), true);
    riproduttore->Avvia();
}

void TCollegamento::Segui(const TDataDigit& d)
{
    bottoneConferma = 1;
    for (int b = 1; b <= d.numBottoni && b <= 16; ++b)
        if (d.funzBott[b - 1] == funzConferma) {
            bottoneConferma = b;
            break;
        }
    if (simulata && (d.tipo != tipo || !riproduttore)) Riproduci(d.tipo);
    tipo = d.tipo;
    std::string nuova = std::string(d.tipo > 0 ? NomeModello(d.tipo) : "no tablet") + " on COM" + std::to_string(d.porta);
    if (simulata) nuova += " (simulated, " + simulata->PercorsoSlave() + ")";
    else if (d.porta == portaDispositivo) nuova += " = " + dispositivo;
    else nuova += " (not " + dispositivo + ", which is COM" + std::to_string(portaDispositivo) + ")";
    if (nuova == descrizione) return;
    descrizione = nuova;
    if (alCambio) alCambio(descrizione);
}

TDataDigit TCollegamento::Record(const TOpzioniHost& o) const
{
    TDataDigit d = RecordPredefinito(o.tipo, o.porta);
    if (simulata) {
        d.limitiDefiniti = true;
        d.xMin = d.yMin = 0;
        d.xMax = d.yMax = 10000;
    }
    if (o.limiti) {
        d.limitiDefiniti = true;
        d.xMin = o.xMin;
        d.yMin = o.yMin;
        d.xMax = o.xMax;
        d.yMax = o.yMax;
    }
    return d;
}

void TCollegamento::Calibrazione(bool in, bool griglia)
{
    inCalibrazione = in;
    perGriglia = griglia;
    punto = 0;
    if (riproduttore) riproduttore->Percorso(in ? TPercorso{} : FiguraGriglia(), !in);
}

TPuntoSimulato PuntoSimulato(int n, bool griglia)
{
    // Sparse points take the nodes corners first, then the centre and the
    // edges, so that any first three span the sheet.
    constexpr int perPuntiSparsi[9] = {0, 6, 8, 2, 4, 1, 3, 5, 7};
    if (n < 9) {
        const int nodo = griglia ? n : perPuntiSparsi[n];
        return {2000 + (nodo / 3) * 3000, 2000 + (nodo % 3) * 3000};
    }
    return {1500 + (n * 1237) % 7000, 1500 + (n * 2741) % 7000};
}

void TCollegamento::PuntoRichiesto()
{
    if (!inCalibrazione) return;
    const TPuntoSimulato p = PuntoSimulato(punto++, perGriglia);
    if (!riproduttore) return;
    riproduttore->VaiEPremi(p.x, p.y, bottoneConferma, 10);
}

void TCollegamento::LimitiRichiesti()
{
    if (!riproduttore) return;
    riproduttore->VaiEPremi(2000, 2000, bottoneConferma, 10);
    riproduttore->VaiEPremi(8000, 8000, bottoneConferma, 10);
}
