// The library's texts are UTF-8; the system's wide calls take UTF-16. These
// carry a text across, either way, for the Windows sources.
#ifndef VELMARIN_TESTO_WIN32_H
#define VELMARIN_TESTO_WIN32_H

#include <string>

std::wstring Largo(const char* testo);
inline std::wstring Largo(const std::string& testo) { return Largo(testo.c_str()); }
// `lunghezza` wide characters of `testo`; -1 up to its terminating zero.
std::string Stretto(const wchar_t* testo, int lunghezza = -1);

#endif
