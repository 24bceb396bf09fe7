// The record of the one serial connection of the process, reached through the
// static pointer devInfo (null while there is none), and what the serial layer
// of each platform shares: the settings taken from the link, the delivery
// gate, the drain, the reader's loop and the resume of delivery.
//
// The record names no system type: the port and the wake object are plain
// numbers that each platform's layer reads as its own (a descriptor and an
// eventfd on POSIX, a HANDLE and an event on Windows), -1 while there is none.
// Where the original record held two completion blocks, the Windows layer
// keeps them beside the record, and the POSIX layer needs none.
#ifndef VELMARIN_IODEV_INFO_H
#define VELMARIN_IODEV_INFO_H

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>
#include <vector>

struct TDigitLink;

#if defined(_WIN32)
using TThreadLettore = std::intptr_t;  // the reader's thread HANDLE, 0 when there is none
#else
using TThreadLettore = std::thread;    // not joinable when there is none
#endif

constexpr std::intptr_t nessunOggetto = -1;  // no port, no wake object

struct TIODevInfo {
    std::intptr_t hCom = nessunOggetto;  // the port, while open
    std::uint8_t porta = 0;         // COM port number
    std::atomic<int> attivo{0};     // the reader's run flag
    std::uint8_t bitDati = 0;
    std::uint8_t controlloFlusso = 0;  // bit 0 DSR/DTR, bit 1 CTS/RTS, bit 2 XON/XOFF
    std::uint8_t codiceParita = 0;  // 0 none, 1 odd, 2 even
    std::uint8_t codiceStop = 0;    // 0 one stop bit, 2 two
    std::int32_t velocita = 0;      // 4800, 9600 or 19200
    TThreadLettore hThread{};       // the reader
    // Wakes the reader from its wait on the port, so that a stop, a hold or a
    // resume reaches it at once even on a silent line; open while the port is.
    std::intptr_t sveglia = nessunOggetto;
    std::atomic<std::uint8_t> abilitato{0};  // delivery on (1) or off (0)
    // Set by the reader when the port reports a hang-up or a fault and no
    // bytes (an adapter pulled, the other side of a pseudo-terminal gone);
    // cleared when bytes come again.
    std::atomic<std::uint8_t> persa{0};
    // Set by a close asked for from inside a notification, on the reader
    // thread: the reader ends once the notification returns and closes the
    // port itself; the host's next close or open joins it.
    bool chiusaDalLettore = false;
    // Handle given to the link and to CDigit for the open port: a number that
    // no earlier open of the process has used, so that a stale copy of it
    // never names the connection running now. 0 while not open.
    std::intptr_t handle = 0;
};

extern TIODevInfo* devInfo;

// A new record with the settings of the link mapped as the port takes them
// (rates other than 4800 and 19200 become 9600, parity letters become codes,
// stop bits other than 2 become one); null when it cannot be allocated.
TIODevInfo* NuovoRecord(const TDigitLink& link);

// A handle for a port just opened, never given before in this process.
std::intptr_t NuovoHandle();

// "COM<n>": the port's name, whatever device stands behind it.
std::string NomePorta(int porta);
// The device that port `porta` opens: the one mapped by IODevMapPort, or the
// platform's own for that number. Empty for a port number that has none.
std::string PercorsoPorta(int porta);
// The platform's own device for a port number in 1..255.
std::string PercorsoPredefinito(int porta);
// The ports mapped by IODevMapPort, by number, with their devices.
std::vector<std::pair<int, std::string>> PorteMappate();

// For the reason of a refusal: "COM1 (/dev/pts/3)", and the line settings
// of the record, "9600 baud, 7 data bits, parity even, 1 stop bit".
std::string PortaEDispositivo(int porta);
std::string DescrizioneLinea(const TIODevInfo& d);

// Write time limit per byte, in milliseconds, at a baud rate: 19200 / rate.
inline int MoltiplicatoreScrittura(std::int32_t velocita) { return 19200 / velocita; }

// The platform's steps of the open, from the port's name to the lines: open
// exclusively, set up and configure the port, start the reader, then raise
// DTR and RTS. 1 when the reader runs; 0 with the port closed again.
int AvviaConnessione(TIODevInfo& d, TDigitLink& link);

// The platform's check of a port for IODevVerificaPorta: opened as
// AvviaConnessione opens it, as a serial line, and closed again. 1, or 0
// with the reason recorded.
int ProvaPorta(int porta);
// The system's code for a port this process holds already: EBUSY, ERROR_BUSY.
extern const unsigned long codicePortaOccupata;

// Lowers DTR and RTS, drops both queues, puts back the settings the port had
// before the open, and closes it; nothing when no port is open.
void ChiudiLinea(TIODevInfo& d);

// The platform's primitives under the shared resume of delivery.
void SvuotaCode(const TIODevInfo& d);      // drops both queues and any transfer under way
void SvegliaLettore(const TIODevInfo& d);  // wakes the reader from any wait of its own
// True when the open port reports itself failed (hung up, device gone) with
// nothing left to read; asked without waiting, while delivery is held and the
// reader does not watch the port.
bool PortaGuasta(const TIODevInfo& d);

// How a platform's reader waits. The shared loop asks it to wait for the
// port while delivery is on, and for a wake-up alone while it is held.
class TAttesaLettore {
public:
    enum TEsito {
        svegliato,  // woken, or nothing to read: test the flags again
        byte,       // the port may hold bytes: drain it
        guasto,     // the port reports a fault and no bytes: pause, then again
        scaduto,    // the time limit passed with no byte
    };
    // Waits for the port, at most `ms` milliseconds (-1: no limit).
    virtual TEsito AttendiPorta(int ms) = 0;
    // Waits for a wake-up alone, at most `ms` milliseconds (-1: no limit).
    virtual void AttendiSveglia(int ms) = 0;

protected:
    ~TAttesaLettore() = default;
};

// A close asked for on the reader thread, from inside a notification: the
// reader cannot wait for itself, so delivery stops at once, the reader ends
// when the notification returns and closes the port on its way out, and the
// connection counts as closed from now on. Returns 1.
int ChiudiDalLettore(TIODevInfo& d);

// The reader's box when its wait objects could not be made.
void BoxGuastoLettore();

// The reader's loop, from the flags set by the open to the stop: wait for
// the port, drain it under the delivery gate, hand every read to the report
// path. Returns the thread's exit value for a regular end, 1.
std::uint32_t CicloLettore(TDigitLink& link, TAttesaLettore& attesa);

#endif
