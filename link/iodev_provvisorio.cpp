// Placeholder serial layer until the termios one lands: there is never a
// record, so every operation reports failure and sends nothing.
#include "iodev.h"

#include "digit.h"

int IODevCreate(TDigitLink&) { return -1; }
int IODevConfigure() { return 0; }
int IODevOpen(TDigitLink&) { return 0; }
int IODevClose() { return 0; }
int IODevDestroy() { return 0; }
std::uint32_t IODevRead(std::uint8_t*, std::uint32_t) { return 0; }
int IODevWrite(const void*, std::uint32_t) { return 0; }
std::uint32_t IODevThread(TDigitLink*) { return 0; }
int IODevHold() { return 0; }
int IODevResume() { return 0; }
void IODevSetDtr() {}
void IODevSetRts() {}
void IODevPurgeTx() {}
void IODevPurgeRx() {}
int IODevMapPort(int, const char*) { return 0; }
