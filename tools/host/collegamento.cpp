#include "collegamento.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "digit.h"
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
    descrizione = std::string(NomeModello(o.tipo)) + ", simulated on " + simulata->PercorsoSlave();
    return true;
}

TDataDigit TCollegamento::Record(int tipo, int porta) const
{
    TDataDigit d = RecordPredefinito(tipo, porta);
    if (simulata) {
        d.parita = 'N';
        d.bitDati = 8;
    }
    return d;
}
