// Placeholder for the serial layer on Win32, until the real one (CreateFileA
// of COMn, overlapped reader thread) takes its place: a port record can be
// made and freed, but no port opens, so the library behaves as with a port
// that is missing.
#include "link/iodev.h"

#include <new>

#include "link/iodev_info.h"
#include "reports/digit_link.h"

TIODevInfo* devInfo = nullptr;

int IODevCreate(TDigitLink& link)
{
    if (devInfo) return 1;
    devInfo = new (std::nothrow) TIODevInfo;
    if (!devInfo) return -1;
    devInfo->porta = link.porta;
    return 1;
}

int IODevConfigure() { return 0; }
int IODevOpen(TDigitLink&) { return 0; }
int IODevClose() { return devInfo ? 1 : 0; }

int IODevDestroy()
{
    if (!devInfo) return 0;
    delete devInfo;
    devInfo = nullptr;
    return 1;
}

std::uint32_t IODevRead(std::uint8_t*, std::uint32_t) { return 0; }
int IODevWrite(const void*, std::uint32_t) { return 0; }
std::uint32_t IODevThread(TDigitLink*) { return 0; }
int IODevHold() { return devInfo ? 1 : 0; }
int IODevResume() { return devInfo ? 1 : 0; }
void IODevSetDtr() {}
void IODevSetRts() {}
void IODevPurgeTx() {}
void IODevPurgeRx() {}
std::intptr_t IODevHandleAperto() { return 0; }
bool IODevSulLettore() { return false; }
TCancelloConsegna::TCancelloConsegna() : preso(false) {}
TCancelloConsegna::~TCancelloConsegna() {}
