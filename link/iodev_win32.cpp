// The serial layer on the Win32 communication services.
//
// The port opens by CreateFileA of its name ("COMn", "\\.\COMn" above 9, or
// the name mapped by IODevMapPort), exclusively and for overlapped use, and is
// set up with SetCommMask(EV_RXCHAR), SetupComm(4096, 4096), PurgeComm,
// SetCommTimeouts and GetCommState/SetCommState; DTR and RTS go up only once
// the reader runs. Reads and writes are overlapped, each kind with its own
// completion block beside the record.
//
// Where this layer goes beyond the original design:
// - The reader waits for its port event together with a wake object
//   (an auto-reset event), so that a stop, a hold or a resume reaches it at
//   once on a silent line; a pending wait is released with SetCommMask.
// - The queue count of ClearCommError and the mask of WaitCommEvent are not
//   always to be trusted: Wine on a pseudo-terminal ends the wait at once with
//   a mask of 0 whenever no byte waits, and has been seen to report the queue
//   empty while bytes wait. So a completed port wait always leads to a drain,
//   and a read that finds the queue count at 0 still asks for the whole buffer,
//   with the all-at-once time limits: on Windows it returns at once with what
//   is there. Wine keeps such a read pending until bytes come and returns with
//   the first of them; the reader's own limit of 20 ms ends it on a quiet line.
//   Where the port wait ends at once, that limit and the reader's pause after
//   an empty drain keep the reader from spinning.
// - The reader never leaves the end of a read to the port's time limits. In
//   Wine (8.0) a read with a total limit of 20 ms, set just before it and
//   read back so, now and then went on until the whole buffer was full
//   (500 ms with bytes coming every 20 ms; at 9600 baud it would be a second
//   of reports), and the gather took its first bytes from one stretch of the
//   stream and its last from another, far later. Which of Wine's steps drops
//   the limit is not known; a read with the all-at-once limits has none to
//   drop.
// - Two threads write (the host, and the reader with the poll of the polled
//   model); their writes take turns on the one write block.
#include "link/iodev.h"

#include <windows.h>

#include <algorithm>
#include <mutex>

#include "link/iodev_info.h"
#include "link/linea_win32.h"
#include "link/ultimo_errore.h"
#include "reports/digit_link.h"

namespace {

OVERLAPPED ovLettura{};    // completion block of all reads
OVERLAPPED ovScrittura{};  // completion block of all writes
// The port's settings as this open found them, put back at close: the next
// program, or the next open, finds the port as it was. Under Wine on a
// pseudo-terminal that is what lets the next open set its parity at all:
// the terminal cannot keep a parity bit, and a set-up that changes nothing
// else is refused as invalid (EINVAL from tcsetattr), so that a second open
// of a line left with the same settings would fail.
DCB dcbOriginale{};
bool originaleLetto = false;
std::mutex turnoScrittura;

constexpr DWORD dimCoda = 4096;
constexpr DWORD tutteLeCode = PURGE_TXABORT | PURGE_RXABORT | PURGE_TXCLEAR | PURGE_RXCLEAR;

HANDLE H(std::intptr_t oggetto) { return reinterpret_cast<HANDLE>(oggetto); }
std::intptr_t N(HANDLE h) { return h ? reinterpret_cast<std::intptr_t>(h) : nessunOggetto; }
HANDLE Porta() { return H(devInfo->hCom); }

void Chiudi(std::intptr_t& oggetto)
{
    if (oggetto != nessunOggetto) CloseHandle(H(oggetto));
    oggetto = nessunOggetto;
}

void ChiudiEvento(OVERLAPPED& ov)
{
    if (ov.hEvent) CloseHandle(ov.hEvent);
    ov = OVERLAPPED{};
}

bool NuovoEvento(OVERLAPPED& ov)
{
    ov = OVERLAPPED{};
    ov.hEvent = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    return ov.hEvent != nullptr;
}

// Completes a transfer that is pending on its block; the count it reports.
bool Completa(HANDLE porta, OVERLAPPED& ov, DWORD& n)
{
    for (;;) {
        if (GetOverlappedResult(porta, &ov, &n, TRUE)) return true;
        if (GetLastError() != ERROR_IO_INCOMPLETE) return false;
    }
}

// One read into the buffer with the read block, ended after `limite` ms by the
// reader itself if the port has not ended it; the count it brought. A wake-up
// cancels a read still pending as well, so that a stop never waits on a port
// that keeps a read for itself; what a cancelled read had brought still
// counts, and the wake-up is signalled again for the reader's next test of
// its flags.
DWORD Leggi(std::uint8_t* buffer, DWORD quanti, DWORD limite)
{
    const HANDLE porta = Porta();
    DWORD letti = 0;
    if (ReadFile(porta, buffer, quanti, &letti, &ovLettura)) return letti;
    if (GetLastError() != ERROR_IO_PENDING) {
        ClearCommError(porta, nullptr, nullptr);
        return 0;
    }
    const HANDLE oggetti[] = {ovLettura.hEvent, H(devInfo->sveglia)};
    const DWORD atteso = WaitForMultipleObjects(2, oggetti, FALSE, limite);
    if (atteso != WAIT_OBJECT_0) {
        CancelIo(porta);
        if (atteso == WAIT_OBJECT_0 + 1) SetEvent(oggetti[1]);
    }
    if (Completa(porta, ovLettura, letti) || GetLastError() == ERROR_OPERATION_ABORTED) return letti;
    ClearCommError(porta, nullptr, nullptr);
    return 0;
}

// A read whose queue count said 0: the all-at-once limits for it, then the
// port's own limits again.
DWORD LeggiQuantoCe(std::uint8_t* buffer, DWORD massimo)
{
    COMMTIMEOUTS subito = LimitiPorta(*devInfo, 0);
    SetCommTimeouts(Porta(), &subito);
    const DWORD letti = Leggi(buffer, massimo, attesaBreve);
    COMMTIMEOUTS proprie = LimitiPorta(*devInfo);
    SetCommTimeouts(Porta(), &proprie);
    return letti;
}

// The reader waits with its own event on WaitCommEvent, and on the wake object.
class TAttesaComm : public TAttesaLettore {
public:
    TAttesaComm(HANDLE porta, HANDLE evento) : porta(porta) { ov.hEvent = evento; }

    // Whatever the mask says once the wait is over, the port is drained: a
    // read that finds nothing ends the drain at once or within its time limit.
    TEsito AttendiPorta(int ms) override
    {
        DWORD maschera = 0, n = 0;
        if (WaitCommEvent(porta, &maschera, &ov)) return byte;
        // A wait refused on a port that cannot even say its state is a port
        // that has gone (an adapter pulled).
        if (GetLastError() != ERROR_IO_PENDING) return ClearCommError(porta, nullptr, nullptr) ? byte : guasto;
        const HANDLE sveglia = H(devInfo->sveglia);
        HANDLE oggetti[] = {ov.hEvent, sveglia};
        const DWORD atteso = WaitForMultipleObjects(2, oggetti, FALSE, ms < 0 ? INFINITE : static_cast<DWORD>(ms));
        if (atteso == WAIT_OBJECT_0) {
            Completa(porta, ov, n);
            return byte;
        }
        SetCommMask(porta, EV_RXCHAR);  // releases the pending wait
        Completa(porta, ov, n);
        return atteso == WAIT_TIMEOUT ? scaduto : svegliato;
    }

    void AttendiSveglia(int ms) override
    {
        WaitForSingleObject(H(devInfo->sveglia), ms < 0 ? INFINITE : static_cast<DWORD>(ms));
    }

private:
    HANDLE porta;
    OVERLAPPED ov{};
};

DWORD WINAPI AvvioLettore(LPVOID link) { return IODevThread(static_cast<TDigitLink*>(link)); }

}  // namespace

void SvuotaCode(const TIODevInfo& d) { PurgeComm(H(d.hCom), tutteLeCode); }

bool PortaGuasta(const TIODevInfo& d)
{
    DWORD errori = 0;
    COMSTAT stato{};
    return !ClearCommError(H(d.hCom), &errori, &stato);  // the device is gone
}

void SvegliaLettore(const TIODevInfo& d)
{
    if (d.sveglia != nessunOggetto) SetEvent(H(d.sveglia));
}

namespace {

// Opens the port with no sharing, for overlapped transfers;
// INVALID_HANDLE_VALUE when it cannot be had, with the reason recorded.
HANDLE ApriEsclusivo(int numero)
{
    const std::string nome = PercorsoPorta(numero);
    if (nome.empty()) {
        RegistraErrore(NomePorta(numero) + ": no such port; the ports are COM1 to COM255", ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE porta = CreateFileA(nome.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OVERLAPPED, nullptr);
    if (porta == INVALID_HANDLE_VALUE)
        RegistraErroreSistema(PortaEDispositivo(numero) + ": cannot be opened", GetLastError());
    return porta;
}

}  // namespace

const unsigned long codicePortaOccupata = ERROR_BUSY;

int ProvaPorta(int numero)
{
    const HANDLE porta = ApriEsclusivo(numero);
    if (porta == INVALID_HANDLE_VALUE) return 0;
    DCB dcb{};
    dcb.DCBlength = sizeof dcb;
    const bool linea = GetCommState(porta, &dcb) != 0;
    if (!linea) RegistraErroreSistema(PortaEDispositivo(numero) + ": not a serial line", GetLastError());
    CloseHandle(porta);
    return linea ? 1 : 0;
}

int AvviaConnessione(TIODevInfo& d, TDigitLink& link)
{
    if (d.hCom != nessunOggetto) {  // already open: the exclusive open fails
        RegistraErrore(NomePorta(d.porta) + ": a connection of this process is open already", ERROR_BUSY);
        return 0;
    }
    const HANDLE porta = ApriEsclusivo(d.porta);
    if (porta == INVALID_HANDLE_VALUE) return 0;
    d.hCom = N(porta);
    dcbOriginale = DCB{};
    dcbOriginale.DCBlength = sizeof dcbOriginale;
    originaleLetto = GetCommState(porta, &dcbOriginale) != 0;
    SetCommMask(porta, EV_RXCHAR);
    SetupComm(porta, dimCoda, dimCoda);
    PurgeComm(porta, tutteLeCode);
    COMMTIMEOUTS limiti = LimitiPorta(d);
    SetCommTimeouts(porta, &limiti);
    if (IODevConfigure() == 0) {
        const DWORD codice = GetLastError();
        d.attivo = 0;
        ChiudiLinea(d);
        SetLastError(codice);
        return 0;
    }
    // The reader's wake object. If it cannot be made the reader ends at its
    // start, with its box, and the port stays open until IODevClose.
    d.sveglia = N(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    d.attivo = 1;  // before the thread exists, so that it finds it set
    const HANDLE thread = CreateThread(nullptr, 0, AvvioLettore, &link, 0, nullptr);
    if (!thread) {
        RegistraErroreSistema(NomePorta(d.porta) + ": the reader thread cannot start", GetLastError());
        d.attivo = 0;
        Chiudi(d.sveglia);
        Chiudi(d.hCom);
        return 0;
    }
    d.hThread = reinterpret_cast<std::intptr_t>(thread);
    d.handle = NuovoHandle();
    EscapeCommFunction(porta, SETDTR);
    EscapeCommFunction(porta, SETRTS);
    return 1;
}

int IODevCreate(TDigitLink& link)
{
    if (devInfo) return 1;
    TIODevInfo* d = NuovoRecord(link);
    if (!d) return -1;
    if (!NuovoEvento(ovLettura)) {
        delete d;
        return -1;
    }
    if (!NuovoEvento(ovScrittura)) {
        ChiudiEvento(ovLettura);
        delete d;
        return -1;
    }
    devInfo = d;
    return 1;
}

int IODevConfigure()
{
    if (!devInfo) return 0;
    DCB dcb{};
    dcb.DCBlength = sizeof dcb;
    GetCommState(Porta(), &dcb);
    DcbDelRecord(*devInfo, dcb);
    const BOOL esito = SetCommState(Porta(), &dcb);
    if (!esito)
        RegistraErroreSistema(PortaEDispositivo(devInfo->porta) + ": the line refused " + DescrizioneLinea(*devInfo),
                              GetLastError());
    devInfo->abilitato = 1;  // whatever the port answered
    return esito ? 1 : 0;
}

void ChiudiLinea(TIODevInfo& d)
{
    if (d.hCom == nessunOggetto) return;
    EscapeCommFunction(H(d.hCom), CLRDTR);
    EscapeCommFunction(H(d.hCom), CLRRTS);
    PurgeComm(H(d.hCom), tutteLeCode);
    if (originaleLetto) SetCommState(H(d.hCom), &dcbOriginale);
    originaleLetto = false;
    Chiudi(d.hCom);
}

int IODevClose()
{
    if (!devInfo) return 0;
    TIODevInfo& d = *devInfo;
    if (IODevSulLettore()) return ChiudiDalLettore(d);
    d.attivo = 0;
    SvegliaLettore(d);
    if (d.hThread) {
        WaitForSingleObject(H(d.hThread), INFINITE);
        CloseHandle(H(d.hThread));
        d.hThread = 0;
    }
    Chiudi(d.sveglia);
    ChiudiLinea(d);
    d.handle = 0;
    return 1;
}

int IODevDestroy()
{
    if (!devInfo || IODevSulLettore()) return 0;
    if (devInfo->attivo || devInfo->hThread || devInfo->hCom != nessunOggetto) IODevClose();
    ChiudiEvento(ovLettura);
    ChiudiEvento(ovScrittura);
    delete devInfo;
    devInfo = nullptr;
    return 1;
}

std::uint32_t IODevRead(std::uint8_t* buffer, std::uint32_t massimo)
{
    if (!devInfo || devInfo->hCom == nessunOggetto || massimo == 0) return 0;
    COMSTAT stato{};
    DWORD errori = 0;
    ClearCommError(Porta(), &errori, &stato);
    if (stato.cbInQue > 0) return Leggi(buffer, std::min<DWORD>(massimo, stato.cbInQue), attesaPrimoByte);
    return LeggiQuantoCe(buffer, massimo);
}

int IODevWrite(const void* buffer, std::uint32_t quanti)
{
    if (!devInfo || !devInfo->abilitato || devInfo->hCom == nessunOggetto) return 0;
    std::lock_guard<std::mutex> turno(turnoScrittura);
    DWORD scritti = 0;
    if (WriteFile(Porta(), buffer, quanti, &scritti, &ovScrittura)) return 1;
    if (GetLastError() == ERROR_IO_PENDING && Completa(Porta(), ovScrittura, scritti)) return 1;
    ClearCommError(Porta(), nullptr, nullptr);
    return 0;
}

std::uint32_t IODevThread(TDigitLink* link)
{
    if (!devInfo) return 0;
    const HANDLE evento = CreateEventA(nullptr, TRUE, FALSE, nullptr);  // the thread's own wait object
    if (!evento || devInfo->sveglia == nessunOggetto) {
        if (evento) CloseHandle(evento);
        BoxGuastoLettore();
        return 0;
    }
    std::uint32_t esito = 0;
    if (SetCommMask(Porta(), EV_RXCHAR)) {
        TAttesaComm attesa(Porta(), evento);
        esito = CicloLettore(*link, attesa);
    }
    if (devInfo->chiusaDalLettore) ChiudiLinea(*devInfo);
    CloseHandle(evento);
    return esito;
}

int IODevHold()
{
    if (!devInfo) return 0;
    EscapeCommFunction(Porta(), CLRDTR);
    devInfo->abilitato = 0;
    SvegliaLettore(*devInfo);
    return 1;
}

void IODevSetDtr()
{
    if (devInfo) EscapeCommFunction(Porta(), SETDTR);
}

void IODevSetRts()
{
    if (devInfo) EscapeCommFunction(Porta(), SETRTS);
}

void IODevPurgeTx()
{
    if (devInfo) PurgeComm(Porta(), PURGE_TXABORT | PURGE_TXCLEAR);
}

void IODevPurgeRx()
{
    if (devInfo) PurgeComm(Porta(), PURGE_RXABORT | PURGE_RXCLEAR);
}


// COM1 to COM9 by their plain names; from COM10 on the device namespace,
// the only way Windows opens them.
std::string PercorsoPredefinito(int porta)
{
    return (porta > 9 ? "\\\\.\\" : "") + NomePorta(porta);
}
