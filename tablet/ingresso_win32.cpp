// The library's entry point on Windows. It acts on DLL_PROCESS_ATTACH only
// and reports success for every reason.
#include <windows.h>

#include "tablet/avvio.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE istanza, DWORD motivo, LPVOID)
{
    if (motivo == DLL_PROCESS_ATTACH) AvviaLibreria(istanza);
    return TRUE;
}
