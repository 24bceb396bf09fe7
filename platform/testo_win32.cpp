#include "platform/testo_win32.h"

#include <windows.h>

#include <cwchar>

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
    if (!testo) return {};
    if (lunghezza < 0) lunghezza = static_cast<int>(std::wcslen(testo));
    if (lunghezza == 0) return {};
    const int n = WideCharToMultiByte(CP_UTF8, 0, testo, lunghezza, nullptr, 0, nullptr, nullptr);
    std::string s(static_cast<std::size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, testo, lunghezza, &s[0], n, nullptr, nullptr);
    return s;
}
