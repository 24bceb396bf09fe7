// GetLastError as the system's code of a failure, described by
// FormatMessage in English where the system has it.
#include <windows.h>

#include "link/ultimo_errore.h"

unsigned long CodiceSistema() noexcept { return GetLastError(); }

std::string DescrizioneSistema(unsigned long codice)
{
    char buffer[512] = "";
    const DWORD flag = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    DWORD n = FormatMessageA(flag, nullptr, codice, MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), buffer,
                             sizeof buffer, nullptr);
    if (n == 0) n = FormatMessageA(flag, nullptr, codice, 0, buffer, sizeof buffer, nullptr);
    while (n > 0 && (buffer[n - 1] == '\n' || buffer[n - 1] == '\r' || buffer[n - 1] == ' ' || buffer[n - 1] == '.'))
        buffer[--n] = '\0';
    std::string testo = n > 0 ? buffer : "system error";
    return testo + " (" + std::to_string(codice) + ")";
}

void ImpostaCodiceSistema(unsigned long codice) noexcept { SetLastError(codice); }
