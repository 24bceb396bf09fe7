// The selection dialog as Windows shows it, under Xvfb: real controls made
// from the templates, worked with the messages a person's clicks send while
// configDigit runs on its own thread, the nested dialog modal over it.
#include <windows.h>

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <tuple>

#include "digit.h"
#include "support/ripeti.h"

namespace {

// The dialog with that caption once it takes input, else null.
HWND Attendi(const wchar_t* titolo)
{
    HWND h = nullptr;
    const auto aperto = [&] {
        return (h = FindWindowW(L"#32770", titolo)) && IsWindowVisible(h) && IsWindowEnabled(h);
    };
    return AttendiFinche(aperto, std::chrono::seconds(60)) ? h : nullptr;
}

bool Attivo(HWND d, int id) { return IsWindowEnabled(GetDlgItem(d, id)) != FALSE; }
bool Spuntato(HWND d, int id) { return SendDlgItemMessageW(d, id, BM_GETCHECK, 0, 0) == BST_CHECKED; }
// Posted, not sent: a click may open a nested dialog, whose loop would hold a sent message.
void Clic(HWND d, int id) { PostMessageW(GetDlgItem(d, id), BM_CLICK, 0, 0); }
void Ok(HWND d) { PostMessageW(d, WM_COMMAND, IDOK, 0); }
void Scegli(HWND d, int id, int voce)
{
    SendDlgItemMessageW(d, id, CB_SETCURSEL, static_cast<WPARAM>(voce), 0);
    PostMessageW(d, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(GetDlgItem(d, id)));
}

// A dialog of this process, closed as its close box would.
BOOL CALLBACK ChiudiDialogo(HWND h, LPARAM)
{
    DWORD processo = 0;
    GetWindowThreadProcessId(h, &processo);
    wchar_t classe[8] = L"";
    GetClassNameW(h, classe, 8);
    if (processo == GetCurrentProcessId() && std::wstring(classe) == L"#32770") PostMessageW(h, WM_CLOSE, 0, 0);
    return TRUE;
}

TEST(DialoghiReali, SceltaEFunzioniSulleFinestreVere)
{
    CDigit digit;
    TDataDigit scelto = digit.GetDataDigit();
    scelto.tipo = 0;
    auto esito = std::async(std::launch::async, [&] { return configDigit(nullptr, &digit, scelto); });
    [&] {
        HWND d = Attendi(L"Scelta tavoletta");
        ASSERT_TRUE(d);
        EXPECT_FALSE(Attivo(d, 2122)) << "no model: the radios are disabled windows";
        Scegli(d, 2120, 5);
        ASSERT_TRUE(AttendiFinche([&] { return Attivo(d, 2122) && Spuntato(d, 2128); })) << "the model's 9600 baud";
        Clic(d, 2124);  // Com3
        Clic(d, 2133);  // odd parity
        Clic(d, 2150);
        HWND f = Attendi(L"Definizione funzioni bottone");
        ASSERT_TRUE(f);
        EXPECT_FALSE(IsWindowEnabled(d)) << "the owner is disabled while the nested dialog runs";
        Scegli(f, 2196, 2);  // "Annulla - Fine funzione"
        Ok(f);
        ASSERT_TRUE(AttendiFinche([&] { return !IsWindow(f) && IsWindowEnabled(d); }));
        Ok(d);
    }();
    // Whatever a failed step left open is closed, so that the test ends.
    while (esito.wait_for(std::chrono::seconds(1)) != std::future_status::ready) EnumWindows(&ChiudiDialogo, 0);
    EXPECT_EQ(std::make_tuple(esito.get(), int(scelto.tipo), int(scelto.porta), int(scelto.velocita), scelto.parita,
                              int(scelto.funzBott[0])),
              std::make_tuple(IDOK, 5, 3, 9600, 'O', int(funzAnnulla)));
}

}  // namespace
