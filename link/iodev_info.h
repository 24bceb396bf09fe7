// The record of the one serial connection of the process, reached through the
// static pointer devInfo (null while there is none), and the delivery gate.
//
// On POSIX the port is a file descriptor set up with termios. Where the record
// of the original design held a port handle and two completion blocks, this one
// holds the descriptor, the reader std::thread and a wake descriptor (an
// eventfd) on which the reader blocks together with the port, so that a stop,
// a hold or a resume reaches it at once even on a silent line.
#ifndef VELMARIN_IODEV_INFO_H
#define VELMARIN_IODEV_INFO_H

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

struct TIODevInfo {
    int hCom = -1;                  // port descriptor, -1 while not open
    std::uint8_t porta = 0;         // COM port number
    std::atomic<int> attivo{0};     // the reader's run flag
    std::uint8_t bitDati = 0;
    std::uint8_t controlloFlusso = 0;  // bit 0 DSR/DTR, bit 1 CTS/RTS, bit 2 XON/XOFF
    std::uint8_t codiceParita = 0;  // 0 none, 1 odd, 2 even
    std::uint8_t codiceStop = 0;    // 0 one stop bit, 2 two
    std::int32_t velocita = 0;      // 4800, 9600 or 19200
    std::thread hThread;            // the reader; not joinable when there is none
    int svegliaFd = -1;             // eventfd that wakes the reader, open while the port is
    std::atomic<std::uint8_t> abilitato{0};  // delivery on (1) or off (0)
    // Handle given to the link and to CDigit for the open port: a number that
    // no earlier open of the process has used, so that a stale copy of it
    // never names the connection running now. 0 while not open.
    std::intptr_t handle = 0;
};

extern TIODevInfo* devInfo;

// "COM<n>": the port's name, whatever device stands behind it.
std::string NomePorta(int porta);
// The device path that port `porta` opens: the one mapped by IODevMapPort, or
// /dev/ttyS<porta-1>. Empty for a port number that has no device.
std::string PercorsoPorta(int porta);

// Write time limit per byte, in milliseconds, at a baud rate: 19200 / rate.
inline int MoltiplicatoreScrittura(std::int32_t velocita) { return 19200 / velocita; }

#endif
