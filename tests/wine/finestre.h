// Working dialogs as a person works them, through the messages that the
// keyboard and the mouse would send their controls; a dialog is found by its
// caption, whichever process shows it.
#ifndef VELMARIN_TEST_FINESTRE_H
#define VELMARIN_TEST_FINESTRE_H

#include <windows.h>

#include <cstdio>
#include <string>

#include "support/ripeti.h"

// Generous: Wine on a loaded machine, and a tablet's set-up waits seconds.
constexpr std::chrono::seconds limiteFinestre(60);

inline bool Aperto(HWND h) { return h && IsWindow(h) && IsWindowVisible(h) && IsWindowEnabled(h); }

// The dialog with that caption once it is open and takes input, else null.
inline HWND Attendi(const wchar_t* titolo)
{
    HWND h = nullptr;
    if (AttendiFinche([&] { return Aperto(h = FindWindowW(L"#32770", titolo)); }, limiteFinestre)) return h;
    std::fprintf(stderr, "no dialog \"%ls\" open\n", titolo);
    return nullptr;
}

inline bool AttendiChiuso(HWND h)
{
    return AttendiFinche([&] { return !IsWindow(h); }, limiteFinestre);
}

inline std::wstring Testo(HWND d, int id)
{
    wchar_t b[256] = L"";
    GetDlgItemTextW(d, id, b, 256);
    return b;
}

inline void Scrivi(HWND d, int id, const std::wstring& testo)
{
    SendDlgItemMessageW(d, id, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(testo.c_str()));
}

// Posted, not sent: a click may open a nested dialog, whose loop would hold
// a sent message until that dialog closes.
inline void Clic(HWND d, int id) { PostMessageW(GetDlgItem(d, id), BM_CLICK, 0, 0); }
inline void Comando(HWND d, int id) { PostMessageW(d, WM_COMMAND, static_cast<WPARAM>(id), 0); }

inline void Scegli(HWND d, int id, int voce)
{
    HWND lista = GetDlgItem(d, id);
    SendMessageW(lista, CB_SETCURSEL, static_cast<WPARAM>(voce), 0);
    PostMessageW(d, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(lista));
}

inline bool Spuntato(HWND d, int id) { return SendDlgItemMessageW(d, id, BM_GETCHECK, 0, 0) == BST_CHECKED; }

#endif
