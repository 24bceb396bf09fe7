#include "collegamento.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "digit.h"
#include "occupanti_porta.h"
#include "record_predefiniti.h"

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
    } else if (!isatty(fd)) {
        errore = percorso + " is not a serial line";
        ok = false;
    }
    close(fd);  // the lock goes with it
    return ok;
}

bool TCollegamento::Prepara(const TOpzioniHost& o, std::chrono::milliseconds passo, std::string& errore)
{
    if (!o.dispositivo.empty()) {
        if (!VerificaDispositivo(o.dispositivo, errore)) return false;
        AvvisaOccupanti(o.dispositivo, stderr);
        IODevMapPort(o.porta, o.dispositivo.c_str());
        descrizione = std::string(NomeModello(o.tipo)) + " on " + o.dispositivo;
        return true;
    }
    simulata = std::make_unique<TTavolettaPty>(o.porta);
    if (!simulata->Valida()) {
        errore = "cannot open a pseudo-terminal for the simulated tablet";
        simulata.reset();
        return false;
    }
    riproduttore = std::make_unique<TRiproduttore>(*simulata, o.tipo, passo);
    riproduttore->Percorso(FiguraGriglia(), true);
    riproduttore->Avvia();
    descrizione = std::string(NomeModello(o.tipo)) + ", simulated on " + simulata->PercorsoSlave() +
                  " (it digitizes each point asked for by itself)";
    return true;
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
    if (!riproduttore) return;
    inCalibrazione = in;
    perGriglia = griglia;
    punto = 0;
    riproduttore->Percorso(in ? TPercorso{} : FiguraGriglia(), !in);
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
    if (!riproduttore || !inCalibrazione) return;
    const TPuntoSimulato p = PuntoSimulato(punto++, perGriglia);
    riproduttore->VaiEPremi(p.x, p.y, 1, 10);
}

void TCollegamento::LimitiRichiesti()
{
    if (!riproduttore) return;
    riproduttore->VaiEPremi(2000, 2000, 1, 10);
    riproduttore->VaiEPremi(8000, 8000, 1, 10);
}
