// The serial layer: one connection to one tablet, reached through the static
// record devInfo, and the reader thread that hands what arrives to the report
// path. One set of operations for every platform: iodev_posix.cpp stands on
// termios, iodev_win32.cpp on the Win32 communication services, and each
// tells how the operations map to its platform.
#ifndef VELMARIN_IODEV_H
#define VELMARIN_IODEV_H

#include <cstdint>

struct TDigitLink;

// Whether port `porta` can be had now as a connection would have it: opened
// exclusively, a serial line, and closed again at once. 1, or 0 with the
// reason in the last error. Needs no record: a host checks its port before
// it opens any dialog.
int IODevVerificaPorta(int porta);

// Makes the record from the port settings of the link; 1 when a record exists
// afterwards (also an earlier one, unchanged), -1 on failure.
int IODevCreate(TDigitLink& link);
// Applies the line settings of the record to the open port; non-zero on
// success, 0 without a record. Called only by IODevOpen.
int IODevConfigure();
// Opens the port exclusively and starts the reader; 1 on success, else 0.
int IODevOpen(TDigitLink& link);
// Stops the reader, drops DTR and RTS, purges and closes; 1, 0 without record.
int IODevClose();
// Closes if open and frees the record; 1, 0 without a record.
int IODevDestroy();

// Reads at most `massimo` of the bytes already queued; 0 when none.
std::uint32_t IODevRead(std::uint8_t* buffer, std::uint32_t massimo);
// Sends the bytes while delivery is on; 1 when handed over, else 0.
int IODevWrite(const void* buffer, std::uint32_t quanti);
// The reader thread's body: 1 after a regular end, 0 after a failed start.
std::uint32_t IODevThread(TDigitLink* link);

int IODevHold();    // delivery off; 1, 0 without a record
int IODevResume();  // purge, DTR up, delivery on; 1, 0 without a record
void IODevSetDtr();
void IODevSetRts();
void IODevPurgeTx();
void IODevPurgeRx();

// The state of the line: no connection, a line that works, or a line whose
// port has failed (it stays lost until bytes come again or it is closed).
enum TStatoLinea { lineaChiusa = 0, lineaAperta = 1, lineaPersa = 2 };
TStatoLinea IODevStatoLinea();

// The handle of the port that is open now, 0 when none is.
std::intptr_t IODevHandleAperto();

// True on the reader thread itself, inside a notification.
bool IODevSulLettore();

// The delivery gate. The reader holds it around each drain, that is around
// the ProcessaReport calls and the notifications they make, and starts a drain
// only if delivery is still on once it holds the gate. Taking the gate after
// IODevHold therefore waits for a notification under way and guarantees that
// no further one starts. On the reader thread the gate is not taken: that
// thread is the one holding it, and a target that stops notifications from
// inside a notification must not wait for itself.
class TCancelloConsegna {
public:
    TCancelloConsegna();
    ~TCancelloConsegna();
    TCancelloConsegna(const TCancelloConsegna&) = delete;
    TCancelloConsegna& operator=(const TCancelloConsegna&) = delete;

private:
    bool preso;
};

#endif
