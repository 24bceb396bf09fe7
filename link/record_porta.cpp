// The record of the one connection: where it lives, how the link's settings
// become the port's, the check of a port and the open around the platform's
// own steps, and the handles given to each open port.
#include "link/iodev_info.h"

#include <new>

#include "link/iodev.h"
#include "link/raccolta_interrotta.h"
#include "link/ultimo_errore.h"
#include "platform/winui.h"
#include "reports/digit_link.h"

TIODevInfo* devInfo = nullptr;

namespace {

std::atomic<std::intptr_t> ultimoHandle{0};  // last handle given to an open port

}  // namespace

TIODevInfo* NuovoRecord(const TDigitLink& link)
{
    TIODevInfo* d = new (std::nothrow) TIODevInfo;
    if (!d) return nullptr;
    d->porta = link.porta;
    d->velocita = (link.velocita == 4800 || link.velocita == 19200) ? link.velocita : 9600;
    d->codiceParita = link.parita == 'E' ? 2 : link.parita == 'O' ? 1 : 0;
    d->codiceStop = link.bitStop == 2 ? 2 : 0;
    d->bitDati = link.bitDati;
    d->controlloFlusso = link.controlloFlusso;
    return d;
}

std::intptr_t NuovoHandle() { return ++ultimoHandle; }

std::string PortaEDispositivo(int porta)
{
    const std::string percorso = PercorsoPorta(porta);
    return NomePorta(porta) + (percorso.empty() ? "" : " (" + percorso + ")");
}

std::string DescrizioneLinea(const TIODevInfo& d)
{
    static const char* const parita[] = {"none", "odd", "even"};
    std::string s = std::to_string(d.velocita) + " baud, " + std::to_string(d.bitDati) + " data bits, parity " +
                    parita[d.codiceParita % 3] + ", " + (d.codiceStop == 2 ? "2 stop bits" : "1 stop bit");
    if (d.controlloFlusso & 0x04) s += ", XON/XOFF";
    return s;
}

std::intptr_t IODevHandleAperto() { return devInfo && devInfo->attivo ? devInfo->handle : 0; }

int IODevVerificaPorta(int porta)
{
    if (devInfo && devInfo->hCom != nessunOggetto && devInfo->porta == porta) {
        RegistraErrore(NomePorta(porta) + ": a connection of this process is open on it", codicePortaOccupata);
        return 0;
    }
    return ProvaPorta(porta);
}

int IODevOpen(TDigitLink& link)
{
    // Open already in this process: refused, and the running reader's
    // record is left alone (its gather, its handle).
    if (devInfo && devInfo->hCom != nessunOggetto) return AvviaConnessione(*devInfo, link);
    link.numAccum = 0;
    if (!devInfo) return 0;
    SegnalaRipresa();  // a new line: nothing read before counts
    // The pause is reckoned from the line's speed, set before the reader runs.
    ImpostaLineaGuardia(static_cast<std::uint32_t>(devInfo->velocita), devInfo->bitDati, devInfo->codiceParita != 0,
                        devInfo->codiceStop == 2 ? 2 : 1);
    Scrivi(link.hPorta, 0);
    const HCURSOR precedente = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    const int esito = AvviaConnessione(*devInfo, link);
    SetCursor(precedente);
    if (devInfo->attivo) Scrivi(link.hPorta, devInfo->handle);
    return esito;
}
