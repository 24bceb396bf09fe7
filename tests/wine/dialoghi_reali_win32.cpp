// The library's dialogs as Windows shows them, worked as a person works them
// (wine/finestre.h) while the call runs on its own thread and the test's
// thread presses the tablet. Under Xvfb: without a display Wine cancels them.
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <string>
#include <tuple>
#include <vector>

#include "digit.h"
#include "link/iodev.h"
#include "wine/finestre.h"
#include "wine/utente_registrato.h"

namespace {

using namespace std::chrono_literals;

bool Abilitato(HWND d, int id) { return IsWindowEnabled(GetDlgItem(d, id)) != FALSE; }

// A press on the tablet, delivered as the reader thread delivers it: under
// the delivery gate, to whichever target listens then.
void Premi(CDigit& digit, int bottone, int x, int y)
{
    TCancelloConsegna cancello;
    CDigitNtfy* bersaglio = digit.GetCommNotification();
    if (bersaglio && bottone) bersaglio->NotifyButton(bottone, x, y);
    if (bersaglio && !bottone) bersaglio->NotifyMove(x, y);
}

BOOL CALLBACK ChiudiSeDialogo(HWND h, LPARAM)
{
    DWORD processo = 0;
    GetWindowThreadProcessId(h, &processo);
    wchar_t classe[16] = L"";
    GetClassNameW(h, classe, 16);
    if (processo == GetCurrentProcessId() && std::wstring(classe) == L"#32770") PostMessageW(h, WM_CLOSE, 0, 0);
    return TRUE;
}

// The call on its own thread while `persona` works the dialogs; what is left
// open is then closed, so a failed step fails instead of hanging.
template <class R>
R ConPersona(std::function<R()> chiamata, const std::function<void()>& persona)
{
    std::future<R> risultato = std::async(std::launch::async, chiamata);
    persona();
    while (risultato.wait_for(1s) != std::future_status::ready) EnumWindows(&ChiudiSeDialogo, 0);
    return risultato.get();
}

COLORREF Pixel(HWND controllo, int x, int y)
{
    HDC dc = GetDC(controllo);
    const COLORREF c = GetPixel(dc, x, y);
    ReleaseDC(controllo, dc);
    return c;
}

// A tablet on a port that does not exist: connecting shows a box, which the
// recorder answers, and presses come from the test.
class DialoghiReali : public ::testing::Test {
protected:
    void SetUp() override
    {
        RegistraUtente(true);
        IODevMapPort(4, "velmarin-nessuna-porta");
        digit.GetDataDigit(dati);
        dati.tipo = 5;
        dati.porta = 4;
        dati.funzBott[0] = funzConferma;
        dati.funzBott[1] = funzAnnulla;
        digit.SetDataDigit(dati);
    }
    void TearDown() override
    {
        IODevMapPort(4, nullptr);
        RegistraUtente(false);
    }
    CDigit digit;
    TDataDigit dati{};
};

// The selection dialog's record, with the radios as clicked, and the button
// functions in the nested dialog.
TEST_F(DialoghiReali, SceltaTavolettaEFunzioniBottoni)
{
    const int modello = 5;  // 9600 baud
    TDataDigit scelto = dati;
    scelto.tipo = 0;
    const int esito = ConPersona<int>([&] { return configDigit(nullptr, &digit, scelto); }, [&] {
        HWND d = Attendi(L"Scelta tavoletta");
        ASSERT_TRUE(d);
        EXPECT_FALSE(Abilitato(d, 2122)) << "no model: the radios are disabled windows";
        Scegli(d, 2120, modello);
        ASSERT_TRUE(AttendiFinche([&] { return Abilitato(d, 2122); }));
        ASSERT_TRUE(AttendiFinche([&] { return Spuntato(d, 2128); })) << "the model's speed shows";
        Clic(d, 2124);  // Com3
        Clic(d, 2133);  // odd parity
        Clic(d, 2149);  // 16 buttons, read by "&Bottoni"
        Clic(d, 2150);
        HWND f = Attendi(L"Definizione funzioni bottone");
        ASSERT_TRUE(f);
        EXPECT_FALSE(IsWindowEnabled(d)) << "the owner is disabled while the nested dialog runs";
        EXPECT_TRUE(Abilitato(f, 2211)) << "16 buttons: every list works";
        EXPECT_EQ(SendDlgItemMessageW(f, 2196, CB_GETCOUNT, 0, 0), 7);
        Scegli(f, 2196, 2);  // "Annulla - Fine funzione"
        Scegli(f, 2211, 6);  // "Inizia Polilinea - Fine Ent."
        Comando(f, IDOK);
        ASSERT_TRUE(AttendiChiuso(f));
        ASSERT_TRUE(Attendi(L"Scelta tavoletta"));
        Comando(d, IDOK);
    });
    EXPECT_EQ(std::make_tuple(esito, int(scelto.tipo), int(scelto.porta), int(scelto.velocita), scelto.parita,
                              int(scelto.numBottoni), int(scelto.funzBott[0]), int(scelto.funzBott[15])),
              std::make_tuple(IDOK, modello, 3, 9600, 'O', 16, int(funzAnnulla), int(funzPolilineaFineEnt)));
}

// The validator filters what is typed; OK with a field empty beeps and the
// dialog stays; a pasted text the validator refuses is put back.
TEST_F(DialoghiReali, VoceRifiutataEPoiAccettata)
{
    double est = -1, nord = -1;
    std::vector<unsigned> beepDopoRifiuto;
    bool apertoDopoRifiuto = false;
    const int esito = ConPersona<int>([&] { return dialogSelectPtiSparsi(nullptr, est, nord); }, [&] {
        HWND d = Attendi(L"Calibrazione per punti sparsi");
        ASSERT_TRUE(d);
        for (const char* c = "12a.5x"; *c; ++c) SendDlgItemMessageW(d, 2000, WM_CHAR, static_cast<WPARAM>(*c), 1);
        EXPECT_EQ(Testo(d, 2000), L"12.5");
        Comando(d, IDOK);
        AttendiFinche([] { return !BeepRegistrati().empty(); });
        beepDopoRifiuto = BeepRegistrati();
        apertoDopoRifiuto = Aperto(d);
        Scrivi(d, 2001, L"abc");
        EXPECT_TRUE(AttendiFinche([&] { return Testo(d, 2001).empty(); }));
        Scrivi(d, 2001, L"-7e2");
        Comando(d, IDOK);
    });
    EXPECT_EQ(std::make_tuple(beepDopoRifiuto, apertoDopoRifiuto, esito, est, nord),
              std::make_tuple(std::vector<unsigned>{48}, true, IDOK, 12.5, -700.0));
}

// "&Limiti" takes two pressed corners; "&Prova" shows an XOR cross on the real
// frame, wiped as it moves and whole after a repaint.
TEST_F(DialoghiReali, LimitiEProvaSulTelaioReale)
{
    TDataDigit scelto = dati;
    const int esito = ConPersona<int>([&] { return configDigit(nullptr, &digit, scelto); }, [&] {
        HWND d = Attendi(L"Scelta tavoletta");
        ASSERT_TRUE(d);
        Clic(d, 2151);
        HWND l = Attendi(L"Limiti tavoletta");
        ASSERT_TRUE(l);
        EXPECT_EQ(Testo(l, 2240), L"il punto inferiore a sinistra");
        Premi(digit, 1, 100, 200);
        EXPECT_TRUE(AttendiFinche([&] { return Testo(l, 2240) == L"il punto superiore a destra"; }));
        Premi(digit, 1, 20100, 15200);
        ASSERT_TRUE(AttendiChiuso(l));
        ASSERT_TRUE(Attendi(L"Scelta tavoletta"));
        Clic(d, 2152);
        HWND p = Attendi(L"Prova tavoletta");
        ASSERT_TRUE(p);
        HWND cornice = GetDlgItem(p, 2280);
        RECT r;
        GetClientRect(cornice, &r);
        const COLORREF faccia = GetSysColor(COLOR_BTNFACE), ciano = RGB(0, 255, 255), croce = faccia ^ ciano;
        // The lower-left limit on (L, B) = (1, bottom - 1), the upper right on
        // (R, T) = (right - 1, 1): the centre on the frame's black line, one
        // arm along it (black XOR the pen), the other across the face.
        const int B = r.bottom - 1, R = r.right - 1;
        Premi(digit, 0, 100, 200);
        EXPECT_TRUE(AttendiFinche([&] { return Pixel(cornice, 1, B - 3) == croce && Pixel(cornice, 4, B) == ciano; }));
        EXPECT_EQ(Testo(p, 2283), L"<=>");
        Premi(digit, 2, 20100, 15200);
        EXPECT_TRUE(AttendiFinche([&] { return Pixel(cornice, R - 3, 1) == croce && Pixel(cornice, R, 4) == ciano; }));
        EXPECT_EQ(Pixel(cornice, 1, B - 3), faccia) << "the old cross is wiped";
        EXPECT_EQ(Testo(p, 2281), L"[020100]");
        EXPECT_EQ(Testo(p, 2283), L"<2>");
        RedrawWindow(cornice, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        SendMessageW(p, WM_NULL, 0, 0);
        EXPECT_EQ(Pixel(cornice, R - 3, 1), croce) << "painted again from the canvas";
        EXPECT_EQ(Pixel(cornice, 1, B - 3), faccia);
        Premi(digit, 0, 10100, 7700);
        Clic(p, 2);
        ASSERT_TRUE(AttendiChiuso(p));
        ASSERT_TRUE(Attendi(L"Scelta tavoletta"));
        Comando(d, IDOK);
    });
    EXPECT_EQ(esito, IDOK);
    EXPECT_TRUE(scelto.limitiDefiniti);
    EXPECT_EQ(std::vector<int>({scelto.xMin, scelto.yMin, scelto.xMax, scelto.yMax}),
              std::vector<int>({100, 200, 20100, 15200}));
}

}  // namespace
