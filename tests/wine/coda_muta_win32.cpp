// The misreporting port of coda_muta.h, through the Win32 layer's table of
// Comm calls.
#include "wine/coda_muta.h"

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
