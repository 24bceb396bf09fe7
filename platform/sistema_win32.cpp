// The services on Windows: the system's own. The library's texts are UTF-8
// on every platform; here they cross to the system in the wide forms
// (MessageBoxW, LoadStringW), so that "già" shows and loads as written
// whatever the ANSI code page of the machine.
#include "platform/sistema.h"
#include "platform/testo_win32.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>


// The owner is a window of the dialog toolkit, not one of the system's, so
// the box has none.
int SistemaMessaggio(void*, const char* testo, const char* titolo, unsigned flags)
{
    return MessageBoxW(nullptr, Largo(testo).c_str(), Largo(titolo).c_str(), flags);
}

void SistemaBeep(unsigned tipo) { MessageBeep(tipo); }

const void* SistemaCaricaCursore(void* istanza, const char* nome)
{
    return LoadCursorA(static_cast<HINSTANCE>(istanza), nome);
}

const void* SistemaImpostaCursore(const void* cursore)
{
    return SetCursor(static_cast<HCURSOR>(const_cast<void*>(cursore)));
}

const void* SistemaCursoreCorrente() { return GetCursor(); }

// LoadStringW with no buffer gives the text where it stands in the module.
int SistemaStringa(void* istanza, unsigned id, char* buf, int size)
{
    const wchar_t* risorsa = nullptr;
    const int lunghezza = LoadStringW(static_cast<HINSTANCE>(istanza), id, reinterpret_cast<LPWSTR>(&risorsa), 0);
    const std::string testo = Stretto(risorsa, lunghezza);
    const std::size_t n = std::min(testo.size(), static_cast<std::size_t>(size - 1));
    std::memcpy(buf, testo.data(), n);
    buf[n] = '\0';
    return static_cast<int>(n);
}

std::uint32_t SistemaTick() { return GetTickCount(); }

void SistemaAttesa(std::uint32_t ms) { Sleep(ms); }
