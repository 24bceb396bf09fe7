// The record's line settings as a DCB, on Windows only.
#ifndef VELMARIN_LINEA_WIN32_H
#define VELMARIN_LINEA_WIN32_H

#include <windows.h>

#include "link/iodev_info.h"

// The record's settings on a DCB as the port reported it: rate, size, parity
// and stop bits, binary transfer, the parity check always on, each handshake
// by its bit of controlloFlusso, and XON 0x11 / XOFF 0x13 at 100 bytes.
// Every other field keeps what the port reported.
void DcbDelRecord(const TIODevInfo& d, DCB& dcb);

constexpr DWORD attesaPrimoByte = 1000;  // ms, the port's own limit
constexpr DWORD attesaBreve = 20;        // ms the reader waits for a read whose queue count said 0

// The time limits of the port: a read returns at once with what is queued,
// or waits at most `primoByte` ms for the first byte to come (with 0 it
// returns at once, all at once); a write may take 19200 / rate milliseconds
// per byte.
COMMTIMEOUTS LimitiPorta(const TIODevInfo& d, DWORD primoByte = attesaPrimoByte);

#endif
