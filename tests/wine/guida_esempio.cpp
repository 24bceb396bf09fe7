// Drives the Windows sample host (velmarin-esempio, beside this program) as a
// person would (wine/finestre.h), while a simulated tablet on COM1
// (sim_comandata) answers on standard input what this program asks of it on
// standard output. It chooses a Numonics tablet on COM1 and digitizes its
// limits, calibrates by four points whose ground position is known, presses
// at known places and reads the host's list; then it quits, starts the host
// again and checks that the host comes back on the same tablet. Each check
// prints "ok" or "FAIL" on standard error; the result is the number of
// failures.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cwchar>
#include <iostream>
#include <string>

#include "tools/esempio_win32/comandi.h"
#include "wine/finestre.h"

namespace {

int fallite = 0;

bool Verifica(bool vero, const std::string& cosa)
{
    std::cerr << (vero ? "ok   " : "FAIL ") << cosa << std::endl;
    if (!vero) ++fallite;
    return vero;
}

template <class F>
bool VerificaFinche(F fatto, const std::string& cosa)
{
    return Verifica(AttendiFinche(fatto, limiteFinestre), cosa);
}

HWND Dialogo(const wchar_t* titolo, const std::string& cosa)
{
    HWND h = Attendi(titolo);
    Verifica(h != nullptr, cosa + " opens");
    return h;
}

std::string Sim(const std::string& comando)
{
    std::cout << comando << std::endl;
    std::string risposta;
    std::getline(std::cin, risposta);
    return risposta;
}

std::string Stretto(const std::wstring& w) { return std::string(w.begin(), w.end()); }

// A press of `bottone` at (x, y), shown again until `fatto` holds, then the
// release. A repeated press adds nothing: the tablet's button is still down.
// The pointer comes there with no button first: the release of the last
// press may have reached the library while nobody listened, when the
// library drops what the port holds, and its button would still be down.
template <class F>
bool Premi(int x, int y, int bottone, F fatto)
{
    const std::string dove = " " + std::to_string(x) + " " + std::to_string(y) + " ";
    Sim("stato" + dove + "0");
    const bool ok = RipetiFinche(fatto, [&] { Sim("stato" + dove + std::to_string(bottone)); }, limiteFinestre);
    Sim("stato" + dove + "0");
    return ok;
}

struct TOspite {
    PROCESS_INFORMATION pi{};
    HWND finestra = nullptr;
    std::string Titolo() const
    {
        wchar_t titolo[512] = L"";
        GetWindowTextW(finestra, titolo, 512);
        return Stretto(titolo);
    }
    bool TitoloHa(const std::string& parte, const std::string& cosa) const
    {
        const bool ok = AttendiFinche([&] { return Titolo().find(parte) != std::string::npos; }, limiteFinestre);
        return Verifica(ok, cosa + " (the title says \"" + Titolo() + "\")");
    }
    void Comando(int id) const { PostMessageW(finestra, WM_COMMAND, id, 0); }
    LRESULT Righe() const { return SendDlgItemMessageW(finestra, IDC_PRESSIONI, LB_GETCOUNT, 0, 0); }
};

// The host beside this program, which is where a program's directory
// search looks first.
bool Avvia(TOspite& o)
{
    wchar_t programma[] = L"velmarin-esempio.exe";
    STARTUPINFOW si{};
    si.cb = sizeof si;
    if (!Verifica(CreateProcessW(nullptr, programma, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &o.pi),
                  "the host starts"))
        return false;
    return VerificaFinche([&] { return IsWindowVisible(o.finestra = FindWindowW(ESEMPIO_CLASSE, nullptr)); },
                          "the host's window appears");
}

bool Esci(TOspite& o)
{
    o.Comando(IDM_ESCI);
    const bool ok = WaitForSingleObject(o.pi.hProcess, 60000) == WAIT_OBJECT_0;
    if (!ok) TerminateProcess(o.pi.hProcess, 1);
    CloseHandle(o.pi.hThread);
    CloseHandle(o.pi.hProcess);
    return Verifica(ok, "Exit ends the host");
}

// The selection dialog: the Numonics tablet (row 8 of the model list) on
// COM1, with the model's speed, its limits digitized at two corners (the
// host calibrates only a tablet with limits).
bool Configura(const TOspite& o)
{
    o.Comando(IDM_CONFIGURA);
    HWND scelta = Dialogo(L"Scelta tavoletta", "the tablet selection");
    if (!scelta) return false;
    Scegli(scelta, 2120, 8);
    Clic(scelta, 2122);  // Com1
    VerificaFinche([&] { return Spuntato(scelta, 2122) && Spuntato(scelta, 2128); }, "Com1 and 9600 baud are chosen");
    Clic(scelta, 2151);
    HWND limiti = Dialogo(L"Limiti tavoletta", "the limits dialog");
    if (!limiti) return false;
    Verifica(Premi(1000, 1000, 1, [&] { return Testo(limiti, 2240) == L"il punto superiore a destra"; }),
             "the lower left corner is taken");
    Verifica(Premi(9000, 9000, 1, [&] { return !IsWindow(limiti); }), "the upper right corner ends the limits dialog");
    Clic(scelta, IDOK);
    return Verifica(AttendiChiuso(scelta), "OK ends the selection") &&
           o.TitoloHa("model 8 on COM1 - listening - not calibrated", "the host listens to the chosen tablet");
}

// Four control points: a sheet turned on the tablet, so that tablet x runs
// North and tablet y runs West, 20 counts to a metre.
struct TPunto {
    int x, y;
    const wchar_t* est;
    const wchar_t* nord;
};
const TPunto controllo[] = {{1000, 1000, L"1500400", L"5000000"},
                            {9000, 1000, L"1500400", L"5000400"},
                            {1000, 9000, L"1500000", L"5000000"},
                            {9000, 9000, L"1500000", L"5000400"}};

bool CalibraPunti(const TOspite& o)
{
    o.Comando(IDM_PUNTI);
    for (const TPunto& p : controllo) {
        const std::string nome = "point " + std::to_string(p.x) + " " + std::to_string(p.y);
        HWND terra = Dialogo(L"Calibrazione per punti sparsi", nome + ": the ground coordinates");
        if (!terra) return false;
        Scrivi(terra, 2000, p.est);
        Scrivi(terra, 2001, p.nord);
        Clic(terra, IDOK);
        AttendiChiuso(terra);
        HWND digitalizza = Dialogo(L"Calibrazione Punti Sparsi", nome + ": the digitizing dialog");
        if (!digitalizza) return false;
        Verifica(std::wcstod(Testo(digitalizza, 2080).c_str(), nullptr) == std::wcstod(p.est, nullptr),
                 nome + ": the digitizing dialog shows the East typed");
        Verifica(Premi(p.x, p.y, 1, [&] { return !IsWindow(digitalizza); }), nome + ": the press confirms it");
    }
    HWND quinto = Dialogo(L"Calibrazione per punti sparsi", "the fifth point's ground coordinates");
    if (!quinto) return false;
    Clic(quinto, IDCANCEL);
    return o.TitoloHa("listening - calibrated by points", "four points calibrate the tablet");
}

// A press, and the host's new line for it without its number.
std::wstring PremiEleggi(const TOspite& o, int x, int y, int bottone)
{
    const LRESULT prima = o.Righe();
    if (!Premi(x, y, bottone, [&] { return o.Righe() > prima; })) return L"";
    wchar_t riga[256] = L"";
    SendDlgItemMessageW(o.finestra, IDC_PRESSIONI, LB_GETTEXT, o.Righe() - 1, reinterpret_cast<LPARAM>(riga));
    const std::wstring letta(riga);
    std::cerr << "  " << Stretto(letta) << std::endl;
    return letta.substr(letta.find(L": ") + 2);
}

// Presses at known places of the sheet: its centre, a point a quarter of the
// way North and three quarters West, and two of its corners.
void PremiNoti(const TOspite& o)
{
    const struct {
        int x, y, bottone;
        const wchar_t* riga;
    } attese[] = {{5000, 5000, 1, L"button 1 (confirm) at x 5000, y 5000 - East 1500200.000, North 5000200.000"},
                  {3000, 7000, 1, L"button 1 (confirm) at x 3000, y 7000 - East 1500100.000, North 5000100.000"},
                  {9000, 9000, 2, L"button 2 (freehand line) at x 9000, y 9000 - East 1500000.000, North 5000400.000"},
                  {1000, 1000, 4, L"button 4 (cancel) at x 1000, y 1000 - East 1500400.000, North 5000000.000"}};
    for (const auto& a : attese)
        Verifica(PremiEleggi(o, a.x, a.y, a.bottone) == a.riga,
                 "press " + std::to_string(a.bottone) + " at " + std::to_string(a.x) + " " + std::to_string(a.y) +
                     ": its counts, function and ground position are listed");
}

}  // namespace

int main()
{
    if (!Verifica(Sim("modello 8") == "ok", "the simulated tablet plays a Numonics")) return 1;
    TOspite primo;
    if (!Avvia(primo)) return 1;
    primo.TitoloHa("no tablet chosen", "a first run has no tablet");
    if (Configura(primo) && CalibraPunti(primo)) PremiNoti(primo);
    Esci(primo);

    // The second run starts on the record the first one chose.
    TOspite secondo;
    if (Avvia(secondo) &&
        secondo.TitoloHa("model 8 on COM1 - listening - not calibrated", "a second run listens to the same tablet")) {
        Verifica(PremiEleggi(secondo, 2000, 3000, 1) == L"button 1 (confirm) at x 2000, y 3000",
                 "the second run lists a press, with no ground position until calibrated");
    }
    Esci(secondo);
    Sim("fine");
    return fallite;
}
