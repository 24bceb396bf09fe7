// The library's dialogs as Windows shows them, worked as a person works
// them: the library's call runs on a thread of its own, the dialogs' thread,
// while the test's thread finds each dialog by its caption and sends its
// controls the messages that the keyboard and the mouse would. Presses of
// the tablet reach the dialog's notification target from the test's
// thread, which stands in for the library's reader thread. What the library
// returns and stores is checked, and what the real controls show.
//
// Run inside a virtual X display (xvfb-run): without one Wine makes no
// window, and every dialog is cancelled. With VELMARIN_IMMAGINI set, each
// of the seven dialogs is written there as a 24-bit BMP, as Windows draws
// it. With VELMARIN_SIM_COMANDI and VELMARIN_SIM_RISPOSTE naming the pipes
// of a simulated tablet (tests/wine/sim_comandata.cpp) that sits behind
// COM1, the limits are also digitized on it through the port.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "digit.h"
#include "support/ripeti.h"
#include "tablet/catalogo.h"
#include "wine/utente_registrato.h"

namespace {

using namespace std::chrono_literals;
constexpr auto limite = 30s;

bool Aperto(HWND h) { return h && IsWindow(h) && IsWindowVisible(h) && IsWindowEnabled(h); }

HWND Attendi(const wchar_t* titolo)
{
    HWND h = nullptr;
    AttendiFinche([&] { return Aperto(h = FindWindowW(L"#32770", titolo)); }, limite);
    if (!Aperto(h)) std::fprintf(stderr, "no dialog \"%ls\" open (window %p)\n", titolo, static_cast<void*>(h));
    return Aperto(h) ? h : nullptr;
}

bool AttendiChiuso(HWND h)
{
    return AttendiFinche([&] { return !IsWindow(h); }, limite);
}

std::wstring Testo(HWND d, int id)
{
    wchar_t b[256] = L"";
    GetDlgItemTextW(d, id, b, 256);
    return b;
}

void Scrivi(HWND d, int id, const wchar_t* testo)
{
    SendDlgItemMessageW(d, id, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(testo));
}

void Digita(HWND d, int id, const char* testo)
{
    for (const char* c = testo; *c; ++c) SendDlgItemMessageW(d, id, WM_CHAR, static_cast<WPARAM>(*c), 1);
}

// Posted, not sent: a click may open a nested dialog, whose loop would hold
// a sent message until that dialog closes.
void Clic(HWND d, int id) { PostMessageW(GetDlgItem(d, id), BM_CLICK, 0, 0); }
void Comando(HWND d, int id) { PostMessageW(d, WM_COMMAND, static_cast<WPARAM>(id), 0); }

void Scegli(HWND d, int id, int voce)
{
    HWND lista = GetDlgItem(d, id);
    SendMessageW(lista, CB_SETCURSEL, static_cast<WPARAM>(voce), 0);
    PostMessageW(d, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(lista));
}

bool Spuntato(HWND d, int id) { return SendDlgItemMessageW(d, id, BM_GETCHECK, 0, 0) == BST_CHECKED; }
bool Abilitato(HWND d, int id) { return IsWindowEnabled(GetDlgItem(d, id)) != FALSE; }

// A press on the tablet, as the reader thread delivers it to the target.
void Premi(CDigit& digit, int bottone, int x, int y)
{
    CDigitNtfy* bersaglio = digit.GetCommNotification();
    ASSERT_NE(bersaglio, nullptr);
    if (bottone)
        bersaglio->NotifyButton(bottone, x, y);
    else
        bersaglio->NotifyMove(x, y);
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

// Runs the library's call on a thread of its own while `persona` works the
// dialogs; whatever the person left open is then closed, so that a failed
// step fails the test instead of hanging it.
template <class R>
R ConPersona(std::function<R()> chiamata, const std::function<void()>& persona)
{
    std::future<R> risultato = std::async(std::launch::async, chiamata);
    persona();
    while (risultato.wait_for(1s) != std::future_status::ready) EnumWindows(&ChiudiSeDialogo, 0);
    return risultato.get();
}

// The dialog as Windows draws it, into VELMARIN_IMMAGINI/nome.bmp.
void Fotografa(HWND d, const char* nome)
{
    const char* cartella = std::getenv("VELMARIN_IMMAGINI");
    if (!cartella) return;
    RedrawWindow(d, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    SendMessageW(d, WM_NULL, 0, 0);
    RECT r;
    GetWindowRect(d, &r);
    const int w = r.right - r.left, h = r.bottom - r.top;
    // The window's own context, frame and caption included, so that
    // nothing of the screen around it counts.
    BITMAPINFO bmi{};
    bmi.bmiHeader = {sizeof(BITMAPINFOHEADER), w, h, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    HDC schermo = GetWindowDC(d);
    HDC memoria = CreateCompatibleDC(schermo);
    void* bit = nullptr;
    HBITMAP immagine = CreateDIBSection(memoria, &bmi, DIB_RGB_COLORS, &bit, nullptr, 0);
    HGDIOBJ prima = SelectObject(memoria, immagine);
    BitBlt(memoria, 0, 0, w, h, schermo, 0, 0, SRCCOPY);
    GdiFlush();
    const DWORD riga = static_cast<DWORD>((w * 3 + 3) & ~3), dati = riga * static_cast<DWORD>(h);
    BITMAPFILEHEADER testa{0x4D42, static_cast<DWORD>(sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER)) + dati, 0,
                           0, static_cast<DWORD>(sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER))};
    const std::string percorso = std::string(cartella) + "/" + nome + ".bmp";
    if (FILE* f = std::fopen(percorso.c_str(), "wb")) {
        std::fwrite(&testa, sizeof testa, 1, f);
        std::fwrite(&bmi.bmiHeader, sizeof bmi.bmiHeader, 1, f);
        std::fwrite(bit, 1, dati, f);
        std::fclose(f);
    }
    SelectObject(memoria, prima);
    DeleteObject(immagine);
    DeleteDC(memoria);
    ReleaseDC(d, schermo);
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

// The selection dialog's record, and the button functions in the nested dialog.
TEST_F(DialoghiReali, SceltaTavolettaEFunzioniBottoni)
{
    const int modello = 5;
    const TTipoDigit& riga = catalogoDigit[modello];
    TDataDigit scelto = dati;
    scelto.tipo = 0;
    const int esito = ConPersona<int>([&] { return configDigit(nullptr, &digit, scelto); }, [&] {
        HWND d = Attendi(L"Scelta tavoletta");
        ASSERT_TRUE(d);
        EXPECT_FALSE(Abilitato(d, 2122)) << "no model: the radios are disabled windows";
        Scegli(d, 2120, modello);
        ASSERT_TRUE(AttendiFinche([&] { return Abilitato(d, 2122); }));
        ASSERT_TRUE(AttendiFinche([&] { return Spuntato(d, riga.velocita == 9600 ? 2128 : riga.velocita == 4800 ? 2127 : 2129); }));
        Clic(d, 2124);  // Com3
        Fotografa(d, "10043");
        Clic(d, 2149);  // 16 buttons, read by "&Bottoni"
        Clic(d, 2150);
        HWND f = Attendi(L"Definizione funzioni bottone");
        ASSERT_TRUE(f);
        EXPECT_FALSE(IsWindowEnabled(d)) << "the owner is disabled while the nested dialog runs";
        EXPECT_TRUE(Abilitato(f, 2211)) << "16 buttons: every list works";
        EXPECT_EQ(SendDlgItemMessageW(f, 2196, CB_GETCOUNT, 0, 0), 7);
        Scegli(f, 2196, 2);  // "Annulla - Fine funzione"
        Scegli(f, 2211, 6);  // "Inizia Polilinea - Fine Ent."
        Fotografa(f, "10044");
        Comando(f, IDOK);
        ASSERT_TRUE(AttendiChiuso(f));
        ASSERT_TRUE(Attendi(L"Scelta tavoletta"));
        Comando(d, IDOK);
    });
    EXPECT_EQ(esito, IDOK);
    EXPECT_EQ(scelto.tipo, modello);
    EXPECT_EQ(scelto.porta, 3);
    EXPECT_EQ(scelto.velocita, riga.velocita);
    EXPECT_EQ(scelto.numBottoni, 16);
    EXPECT_EQ(scelto.funzBott[0], funzAnnulla);
    EXPECT_EQ(scelto.funzBott[15], funzPolilineaFineEnt);
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
        Digita(d, 2000, "12a.5x");
        EXPECT_EQ(Testo(d, 2000), L"12.5");
        Comando(d, IDOK);
        AttendiFinche([] { return !BeepRegistrati().empty(); });
        beepDopoRifiuto = BeepRegistrati();
        apertoDopoRifiuto = Aperto(d);
        Scrivi(d, 2001, L"abc");
        AttendiFinche([&] { return Testo(d, 2001).empty(); });
        EXPECT_EQ(Testo(d, 2001), L"");
        Scrivi(d, 2001, L"-7e2");
        Fotografa(d, "10040");
        Comando(d, IDOK);
    });
    EXPECT_EQ(beepDopoRifiuto, std::vector<unsigned>{48});
    EXPECT_TRUE(apertoDopoRifiuto);
    EXPECT_EQ(esito, IDOK);
    EXPECT_DOUBLE_EQ(est, 12.5);
    EXPECT_DOUBLE_EQ(nord, -700);
}

// The two calibrations end to end: ground typed in the entry dialogs, each
// point pressed on the tablet while its digitizing dialog is open; the map
// then gives the ground of every point back.
struct TPunto {
    int x, y;
    double est, nord;
};

struct TCalibrazione {
    const char* nome;
    bool griglia;
    std::vector<TPunto> punti;
};

const TCalibrazione calibrazioni[] = {
    {"QuattroPunti", false,
     {{1000, 1000, 500, 200}, {9000, 1000, 1300, 200}, {1000, 9000, 500, 1000}, {9000, 9000, 1300, 1000}}},
    // 2 by 2 squares of 100 from (500, 200): nodes East index outermost.
    {"Griglia2x2", true,
     {{1000, 1000, 500, 200}, {1000, 5000, 500, 300}, {1000, 9000, 500, 400},
      {5000, 1000, 600, 200}, {5000, 5000, 600, 300}, {5000, 9000, 600, 400},
      {9000, 1000, 700, 200}, {9000, 5000, 700, 300}, {9000, 9000, 700, 400}}},
};

class CalibrazioniReali : public DialoghiReali, public ::testing::WithParamInterface<TCalibrazione> {};

TEST_P(CalibrazioniReali, DaiDialoghiAllaMappa)
{
    const TCalibrazione& c = GetParam();
    const bool fatta = ConPersona<bool>(
        [&] { return c.griglia ? digit.CalibraGriglia(nullptr) : digit.CalibraPtSparsi(nullptr); }, [&] {
            if (c.griglia) {
                HWND g = Attendi(L"Calibrazione per griglia");
                ASSERT_TRUE(g);
                const wchar_t* valori[] = {L"2", L"2", L"500", L"200", L"100", L"100"};
                for (int i = 0; i < 6; ++i) Scrivi(g, 2040 + i, valori[i]);
                Fotografa(g, "10041");
                Comando(g, IDOK);
                ASSERT_TRUE(AttendiChiuso(g));
            }
            const wchar_t* titolo = c.griglia ? L"Calibrazione Griglia" : L"Calibrazione Punti Sparsi";
            bool fotografato = false;
            for (const TPunto& p : c.punti) {
                if (!c.griglia) {
                    HWND s = Attendi(L"Calibrazione per punti sparsi");
                    ASSERT_TRUE(s);
                    Scrivi(s, 2000, std::to_wstring(p.est).c_str());
                    Scrivi(s, 2001, std::to_wstring(p.nord).c_str());
                    Comando(s, IDOK);
                    ASSERT_TRUE(AttendiChiuso(s));
                }
                HWND g = Attendi(titolo);
                ASSERT_TRUE(g);
                char atteso[32];
                std::snprintf(atteso, sizeof atteso, "%g", p.est);
                ASSERT_TRUE(AttendiFinche([&] { return Testo(g, 2080) == std::wstring(atteso, atteso + std::string(atteso).size()); }))
                    << "the dialog shows the point's East";
                if (!fotografato) Fotografa(g, "10042");
                fotografato = true;
                Premi(digit, 3, p.x + 50, p.y + 50);  // a button with no function: nothing happens
                Premi(digit, 1, p.x, p.y);
                ASSERT_TRUE(AttendiChiuso(g));
            }
            if (!c.griglia) {
                HWND s = Attendi(L"Calibrazione per punti sparsi");
                ASSERT_TRUE(s);
                Comando(s, IDCANCEL);
            }
        });
    ASSERT_TRUE(fatta);
    for (const TPunto& p : c.punti) {
        double est = 0, nord = 0;
        ASSERT_TRUE(digit.CalcoloCoordTrasfCalibrFine(p.x, p.y, est, nord));
        EXPECT_NEAR(est, p.est, 1e-6);
        EXPECT_NEAR(nord, p.nord, 1e-6);
    }
}

INSTANTIATE_TEST_SUITE_P(Calibrazioni, CalibrazioniReali, ::testing::ValuesIn(calibrazioni),
                         [](const auto& info) { return std::string(info.param.nome); });

void LimitiSono(const TDataDigit& d, int xMin, int yMin, int xMax, int yMax)
{
    EXPECT_TRUE(d.limitiDefiniti);
    EXPECT_EQ(std::vector<int>({d.xMin, d.yMin, d.xMax, d.yMax}), std::vector<int>({xMin, yMin, xMax, yMax}));
}

COLORREF Pixel(HWND controllo, int x, int y)
{
    HDC dc = GetDC(controllo);
    const COLORREF c = GetPixel(dc, x, y);
    ReleaseDC(controllo, dc);
    return c;
}

// "&Limiti" takes two corners pressed on the tablet; "&Prova" then shows the
// pointer as an XOR cross on the real frame, wiped as it moves and kept
// whole when the frame is painted again.
TEST_F(DialoghiReali, LimitiEProvaSulTelaioReale)
{
    TDataDigit scelto = dati;
    scelto.tipo = 5;
    const int esito = ConPersona<int>([&] { return configDigit(nullptr, &digit, scelto); }, [&] {
        HWND d = Attendi(L"Scelta tavoletta");
        ASSERT_TRUE(d);
        Clic(d, 2151);
        HWND l = Attendi(L"Limiti tavoletta");
        ASSERT_TRUE(l);
        EXPECT_EQ(Testo(l, 2240), L"il punto inferiore a sinistra");
        Fotografa(l, "10045");
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
        Fotografa(p, "10046");
        Clic(p, 2);
        ASSERT_TRUE(AttendiChiuso(p));
        ASSERT_TRUE(Attendi(L"Scelta tavoletta"));
        Comando(d, IDOK);
    });
    EXPECT_EQ(esito, IDOK);
    LimitiSono(scelto, 100, 200, 20100, 15200);
}

// The simulated tablet behind COM1: one command a line, one answer a line.
class TTavolettaComandata {
public:
    TTavolettaComandata()
    {
        const char* al = std::getenv("VELMARIN_SIM_COMANDI");
        const char* dal = std::getenv("VELMARIN_SIM_RISPOSTE");
        if (!al || !dal) return;
        comandi = std::fopen(al, "w");
        risposte = std::fopen(dal, "r");
    }
    ~TTavolettaComandata()
    {
        if (comandi) std::fclose(comandi);
        if (risposte) std::fclose(risposte);
    }
    bool Presente() const { return comandi && risposte; }
    std::string Chiedi(const std::string& comando)
    {
        std::fprintf(comandi, "%s\n", comando.c_str());
        std::fflush(comandi);
        char riga[256] = "";
        if (!std::fgets(riga, sizeof riga, risposte)) return "";
        std::string r(riga);
        while (!r.empty() && (r.back() == '\n' || r.back() == '\r')) r.pop_back();
        return r;
    }

    // Plays `modello`, and gives `d` COM1 and the model's line settings.
    bool Modello(int modello, TDataDigit& d)
    {
        const TTipoDigit& riga = catalogoDigit[modello];
        d.porta = 1;
        d.velocita = riga.velocita;
        d.parita = riga.parita;
        d.bitDati = riga.bitDati;
        d.bitStop = riga.bitStop;
        return Chiedi("modello " + std::to_string(modello)) == "ok";
    }
    // A press at (x, y), shown again until `fatto` holds (still one press,
    // against a report that a read merged or lost), then the release.
    template <class F>
    bool Premi(int x, int y, F fatto)
    {
        const std::string dove = "stato " + std::to_string(x) + " " + std::to_string(y);
        const bool ok = RipetiFinche(fatto, [&] { Chiedi(dove + " 1"); }, limite);
        Chiedi(dove + " 0");
        return ok;
    }

private:
    FILE* comandi = nullptr;
    FILE* risposte = nullptr;
};

// "&Limiti" on a tablet that answers on COM1: the selection dialog connects
// it, and the two corners come from presses on it, through the port and the
// reader thread. A press is shown until the dialog has taken it: a state
// shown again is no new press, it only makes up for a report that a read
// merged or lost.
TEST_F(DialoghiReali, LimitiDallaTavolettaSuCom1)
{
    TTavolettaComandata tavoletta;
    if (!tavoletta.Presente()) GTEST_SKIP() << "no simulated tablet behind COM1";
    TDataDigit scelto = dati;
    ASSERT_TRUE(tavoletta.Modello(scelto.tipo, scelto));
    const int esito = ConPersona<int>([&] { return configDigit(nullptr, &digit, scelto); }, [&] {
        HWND d = Attendi(L"Scelta tavoletta");
        ASSERT_TRUE(d);
        Clic(d, 2151);
        HWND l = Attendi(L"Limiti tavoletta");
        ASSERT_TRUE(l);
        EXPECT_TRUE(tavoletta.Premi(1200, 800, [&] { return Testo(l, 2240) == L"il punto superiore a destra"; }));
        EXPECT_TRUE(tavoletta.Premi(31000, 22000, [&] { return !IsWindow(l); }));
        ASSERT_TRUE(Attendi(L"Scelta tavoletta"));
        Comando(d, IDOK);
    });
    EXPECT_EQ(esito, IDOK);
    EXPECT_TRUE(MessaggiRegistrati().empty()) << "COM1 opened: no box";
    LimitiSono(scelto, 1200, 800, 31000, 22000);
}

// A press that reaches the digitizing dialog as it is cancelled on the
// screen: whichever comes first ends it, nothing hangs, and a result of 1
// always brings the pressed point.
TEST_F(DialoghiReali, PressioneEAnnullaInsiemeSuCom1)
{
    TTavolettaComandata tavoletta;
    if (!tavoletta.Presente()) GTEST_SKIP() << "no simulated tablet behind COM1";
    ASSERT_TRUE(tavoletta.Modello(dati.tipo, dati));
    digit.SetDataDigit(dati);
    ASSERT_TRUE(digit.Init(nullptr));
    digit.SendInitString();
    int confermati = 0;
    for (int k = 1; k <= 10; ++k) {
        int x = -1, y = -1;
        const int esito = ConPersona<int>([&] { return dialogGetPnt(nullptr, "Punto", &digit, 1, 2, x, y); }, [&] {
            HWND g = Attendi(L"Punto");
            ASSERT_TRUE(g);
            // Released, then pressed, the press shown again until the dialog
            // has gone (still one press), against a report that a read merged
            // or lost; meanwhile "&Annulla" is clicked, staggered from round to
            // round across the time a press takes to arrive, so that either
            // may come first. The stagger waits for nothing.
            tavoletta.Chiedi("stato " + std::to_string(k * 100) + " " + std::to_string(k * 200) + " 0");
            std::thread premi([&] { tavoletta.Premi(k * 100, k * 200, [&] { return !IsWindow(g); }); });
            std::this_thread::sleep_for(std::chrono::milliseconds(15 * k));
            Clic(g, IDCANCEL);
            EXPECT_TRUE(AttendiChiuso(g));
            premi.join();
        });
        ASSERT_TRUE(esito == IDOK || esito == IDCANCEL) << esito;
        confermati += esito == IDOK;
        EXPECT_EQ(x, esito == IDOK ? k * 100 : -1);
        EXPECT_EQ(y, esito == IDOK ? k * 200 : -1);
    }
    std::printf("%d of 10 presses came before the cancel\n", confermati);
}

}  // namespace
