// The services on Windows: the system's own. The library's texts are UTF-8
// on every platform; here they cross to the system in the wide forms
// (MessageBoxW, LoadStringW), so that "già" shows and loads as written
// whatever the ANSI code page of the machine.
#include "platform/sistema.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

std::wstring Largo(const char* testo)
{
    if (!testo || !*testo) return {};
    const int n = MultiByteToWideChar(CP_UTF8, 0, testo, -1, nullptr, 0);
    std::wstring w(static_cast<std::size_t>(n > 0 ? n : 1), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, testo, -1, &w[0], n);
    w.resize(w.size() - 1);
    return w;
}

std::string Stretto(const wchar_t* testo, int lunghezza)
{
    if (lunghezza <= 0) return {};
    const int n = WideCharToMultiByte(CP_UTF8, 0, testo, lunghezza, nullptr, 0, nullptr, nullptr);
    std::string s(static_cast<std::size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, testo, lunghezza, &s[0], n, nullptr, nullptr);
    return s;
}

}  // namespace

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
