// A port that misreports as Wine has been seen to: ClearCommError says its
// queue is empty and WaitCommEvent gives a blank mask, whatever waits. The
// misreporting calls take the reader's place of the system's own, through
// the Win32 layer's table of Comm calls; they still do the system's work.
#include "link/servizi_comm_win32.h"

namespace {

BOOL WINAPI CodaMuta(HANDLE porta, LPDWORD errori, LPCOMSTAT stato)
{
    const BOOL esito = ClearCommError(porta, errori, stato);
    if (stato) stato->cbInQue = 0;
    return esito;
}

// The port writes its mask elsewhere, also once a pending wait completes.
BOOL WINAPI MascheraMuta(HANDLE porta, LPDWORD maschera, LPOVERLAPPED ov)
{
    static DWORD scartata;  // one reader thread waits at a time
    *maschera = 0;
    return WaitCommEvent(porta, &scartata, ov);
}

}  // namespace

void RendiCodaMuta() { serviziComm = {CodaMuta, MascheraMuta}; }
