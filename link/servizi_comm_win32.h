// The two Comm calls whose answers steer the reader, the queue count of
// ClearCommError and the event mask of WaitCommEvent, reached through a table
// that a test may replace, to play a port that misreports them. Every other
// call of the Win32 layer goes straight to the system.
#ifndef VELMARIN_SERVIZI_COMM_WIN32_H
#define VELMARIN_SERVIZI_COMM_WIN32_H

#include <windows.h>

struct TServiziComm {
    BOOL(WINAPI* ClearCommError)(HANDLE porta, LPDWORD errori, LPCOMSTAT stato);
    BOOL(WINAPI* WaitCommEvent)(HANDLE porta, LPDWORD maschera, LPOVERLAPPED ov);
};

// The system's own calls, unless a test has put others in their place while
// no port was open.
extern TServiziComm serviziComm;

#endif
