// velmarin's sample host for Windows: a window whose menu lets the user choose
// and set up the tablet and calibrate it, and whose list shows the last
// presses: the tablet counts, the button's function and, once calibrated,
// East and North, and after a calibration the library's report of it. It
// uses only the DLL's exported interface: digit.h, and the report's records
// from velmarin.h.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#include <shlobj.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>

#include "comandi.h"
#include "digit.h"
#include "velmarin.h"

namespace {

constexpr UINT WM_PRESSIONE = WM_APP + 1;  // lParam: a TPressione from the heap
constexpr int maxRighe = 200;              // presses kept in the list

// A press as the library's reader thread saw it.
struct TPressione {
    std::int32_t bottone, x, y;
    int funzione;
    bool aTerra;  // est and nord hold its ground position
    double est, nord;
};

// The library calls its target on its reader thread, inside the decoding of
// the report: the place to ask for the button's function and the report's
// ground position. The press goes to the window's thread as a posted copy;
// the window itself is never touched from here.
class CAscolto final : public CDigitNtfy {
public:
    explicit CAscolto(CDigit& d) : digit(d) {}
    HWND finestra = nullptr;

    void NotifyMove(std::int32_t, std::int32_t) override {}
    void NotifyButton(std::int32_t bottone, std::int32_t x, std::int32_t y) override
    {
        auto p = std::make_unique<TPressione>(TPressione{bottone, x, y, digit.GetFunzButt(bottone), false, 0, 0});
        int b;
        p->aTerra = digit.TrasformaCoordDigit(p->est, p->nord, b);
        if (PostMessageW(finestra, WM_PRESSIONE, 0, reinterpret_cast<LPARAM>(p.get()))) p.release();
    }

private:
    CDigit& digit;
};

struct TEsempio {
    CDigit digit;
    TDataDigit dati;  // the host's record: the user's last choice
    CAscolto ascolto{digit};
    HWND finestra = nullptr;
    HWND lista = nullptr;
    int pressioni = 0;
};

// The record lives in the user's Application Data folder (%APPDATA%\velmarin),
// where Windows keeps each user's settings: the program's own folder may lie
// under Program Files, which a user cannot write.
std::wstring FileDati()
{
    wchar_t cartella[MAX_PATH];
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, cartella))) return L"";
    std::wstring percorso = std::wstring(cartella) + L"\\velmarin";
    CreateDirectoryW(percorso.c_str(), nullptr);
    return percorso + L"\\esempio_win32.dat";
}

// The file holds a mark and the record, whole; anything else is ignored.
constexpr char marca[8] = "VMDIG01";
using TFile = std::unique_ptr<FILE, int (*)(FILE*)>;

bool CaricaDati(TDataDigit& dati)
{
    TFile f(_wfopen(FileDati().c_str(), L"rb"), std::fclose);
    char m[sizeof marca];
    TDataDigit letti;
    // The selection dialog shows the record's model as a row of the library's
    // catalogue, 0 (none) to 8.
    if (!f || std::fread(m, sizeof m, 1, f.get()) != 1 || std::memcmp(m, marca, sizeof m) != 0 ||
        std::fread(&letti, sizeof letti, 1, f.get()) != 1 || std::fgetc(f.get()) != EOF || letti.tipo < 0 ||
        letti.tipo > 8)
        return false;
    dati = letti;
    return true;
}

void SalvaDati(const TDataDigit& dati)
{
    TFile f(_wfopen(FileDati().c_str(), L"wb"), std::fclose);
    if (f) {
        std::fwrite(marca, sizeof marca, 1, f.get());
        std::fwrite(&dati, sizeof dati, 1, f.get());
    }
}

const wchar_t* NomeFunzione(int funzione)
{
    switch (funzione) {
    case funzConferma: return L"confirm";
    case funzAnnulla: return L"cancel";
    case funzLineaDisLib: return L"freehand line";
    case funzLineaFineEnt: return L"line";
    case funzPolilineaDisLib: return L"freehand polyline";
    case funzPolilineaFineEnt: return L"polyline";
    default: return L"none";
    }
}

void AggiornaTitolo(TEsempio& e)
{
    wchar_t titolo[160];
    if (e.dati.tipo <= 0) {
        std::swprintf(titolo, 160, L"velmarin sample - no tablet chosen");
    } else {
        const bool ascolta = e.digit.GetCommNotification() == &e.ascolto;
        const wchar_t* calibrata = e.digit.IsCalibratoGriglia() ? L"calibrated by grid"
                                   : e.digit.IsCalibrato()      ? L"calibrated by points"
                                                                : L"not calibrated";
        std::swprintf(titolo, 160, L"velmarin sample - model %d on COM%d - %ls - %ls", e.dati.tipo, e.dati.porta,
                      ascolta ? L"listening" : L"not listening", calibrata);
    }
    SetWindowTextW(e.finestra, titolo);
}

void Ascolta(TEsempio& e)
{
    if (e.dati.tipo > 0) e.digit.SetCommNotificationTo(&e.ascolto);
    AggiornaTitolo(e);
}

// In the order the library binds: the record, the port, the tablet's set-up
// (which waits for the tablet, up to a few seconds), then the target.
void Collega(TEsempio& e)
{
    e.digit.SetDataDigit(e.dati);
    HCURSOR prima = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    if (e.dati.tipo > 0 && e.digit.Init(nullptr)) {
        e.digit.SendInitString();
        Ascolta(e);
    }
    SetCursor(prima);
    AggiornaTitolo(e);
}

// The library's dialogs run their modal loops on this thread. The exported
// interface takes their parent as the library's own window type, which a
// host cannot make from its HWND, so they open with no owner, and this window
// is disabled meanwhile, as a dialog's owner is. They make themselves the
// tablet's target and leave notification stopped.
template <class F>
void DialogoLibreria(TEsempio& e, F dialogo)
{
    e.digit.StopCommNotification();
    AggiornaTitolo(e);
    EnableWindow(e.finestra, FALSE);
    dialogo();
    EnableWindow(e.finestra, TRUE);
    SetForegroundWindow(e.finestra);
}

// A new model, resolution or limits void the calibration, as the library's
// warning before the dialog says.
bool CambiaMappa(const TDataDigit& a, const TDataDigit& b)
{
    return a.tipo != b.tipo || a.risoluzione != b.risoluzione || a.limitiDefiniti != b.limitiDefiniti ||
           a.xMin != b.xMin || a.yMin != b.yMin || a.xMax != b.xMax || a.yMax != b.yMax;
}

void Configura(TEsempio& e)
{
    TDataDigit scelta = e.dati;
    int esito = 0;
    DialogoLibreria(e, [&] { esito = configDigit(nullptr, &e.digit, scelta); });
    if (esito == risultatoNo) {  // the user kept the calibrated tablet
        Ascolta(e);
        return;
    }
    if (esito == 1) {
        if (CambiaMappa(e.dati, scelta)) e.digit.SetToNotCalibrato();
        e.dati = scelta;
        SalvaDati(e.dati);
    }
    // The dialog sets the tablet up with its working copy, even when it is
    // then cancelled: the host's record goes back on the tablet either way.
    Collega(e);
}

// A figure of the report, or "none" where it has none (three points).
std::wstring Cifra(double v)
{
    if (v != v) return L"none";
    wchar_t b[32];
    std::swprintf(b, 32, L"%.4g", v);
    return b;
}

// The library's report of the calibration just made, in a box.
void MostraRapporto(TEsempio& e)
{
    velmarin_fit_summary s{};
    if (RapportoCalibrazione(e.digit, &s, nullptr, 0) == 0) return;
    static const struct { unsigned bit; const wchar_t* testo; } avvisi[] = {
        {VELMARIN_WARN_CLUSTERED, L"\n- the points cover little of the limits"},
        {VELMARIN_WARN_COLLINEAR, L"\n- the points lie nearly in a line"},
        {VELMARIN_WARN_BLUNDER, L"\n- the worst point is probably wrong: digitize it again"},
        {VELMARIN_WARN_NO_REDUNDANCY, L"\n- three points: nothing checks them"},
        {VELMARIN_WARN_NODE_OUT_OF_PLACE, L"\n- a grid node departs from its row and column"},
    };
    std::wstring avviso;
    for (const auto& a : avvisi)
        if (s.warnings & a.bit) avviso += a.testo;
    wchar_t testo[600];
    std::swprintf(testo, 600,
                  L"%d %ls, in ground units:\nRMS %ls\nStandard deviation %ls\nLargest residuals: %d and %d\n"
                  L"Predicted worst error %ls%ls%ls",
                  s.points, s.kind == VELMARIN_FIT_GRID ? L"grid nodes" : L"points", Cifra(s.rms).c_str(),
                  Cifra(s.std_dev).c_str(), s.worst[0] + 1, s.worst[1] + 1, Cifra(s.predicted_worst).c_str(),
                  avviso.empty() ? L"" : L"\n\nWarnings:", avviso.c_str());
    MessageBoxW(e.finestra, testo, L"Calibration report", MB_OK | (s.warnings ? MB_ICONWARNING : MB_ICONINFORMATION));
}

void Calibra(TEsempio& e, bool griglia)
{
    if (!e.digit.IsScelto()) {
        MessageBoxW(e.finestra, L"Choose the tablet and digitize its limits first (Tablet, Choose and set up).",
                    L"velmarin sample", MB_OK | MB_ICONINFORMATION);
        return;
    }
    bool calibrato = false;
    DialogoLibreria(e, [&] { calibrato = griglia ? e.digit.CalibraGriglia(nullptr) : e.digit.CalibraPtSparsi(nullptr); });
    if (calibrato && e.digit.IsCalibrato()) MostraRapporto(e);
    Ascolta(e);
}

void Aggiungi(TEsempio& e, const TPressione& p)
{
    wchar_t riga[200];
    const int n = std::swprintf(riga, 200, L"%d: button %d (%ls) at x %d, y %d", ++e.pressioni, p.bottone,
                                NomeFunzione(p.funzione), p.x, p.y);
    if (p.aTerra && n > 0) std::swprintf(riga + n, 200 - n, L" - East %.3f, North %.3f", p.est, p.nord);
    SendMessageW(e.lista, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(riga));
    const LRESULT righe = SendMessageW(e.lista, LB_GETCOUNT, 0, 0);
    if (righe > maxRighe) SendMessageW(e.lista, LB_DELETESTRING, 0, 0);
    SendMessageW(e.lista, LB_SETTOPINDEX, righe - 1, 0);
}

HMENU Menu()
{
    HMENU tavoletta = CreatePopupMenu();
    AppendMenuW(tavoletta, MF_STRING, IDM_CONFIGURA, L"&Choose and set up...");
    AppendMenuW(tavoletta, MF_STRING, IDM_PUNTI, L"Calibrate by &points...");
    AppendMenuW(tavoletta, MF_STRING, IDM_GRIGLIA, L"Calibrate by &grid...");
    AppendMenuW(tavoletta, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(tavoletta, MF_STRING, IDM_ASCOLTA, L"&Listen");
    AppendMenuW(tavoletta, MF_STRING, IDM_FERMA, L"&Stop listening");
    AppendMenuW(tavoletta, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(tavoletta, MF_STRING, IDM_ESCI, L"E&xit");
    HMENU barra = CreateMenu();
    AppendMenuW(barra, MF_POPUP, reinterpret_cast<UINT_PTR>(tavoletta), L"&Tablet");
    return barra;
}

bool Comando(TEsempio& e, int id)
{
    switch (id) {
    case IDM_CONFIGURA: Configura(e); return true;
    case IDM_PUNTI: Calibra(e, false); return true;
    case IDM_GRIGLIA: Calibra(e, true); return true;
    case IDM_ASCOLTA: Ascolta(e); return true;
    case IDM_FERMA:
        e.digit.StopCommNotification();
        AggiornaTitolo(e);
        return true;
    case IDM_ESCI: DestroyWindow(e.finestra); return true;
    default: return false;
    }
}

LRESULT CALLBACK Finestra(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    auto* e = reinterpret_cast<TEsempio*>(GetWindowLongPtrW(h, GWLP_USERDATA));
    switch (msg) {
    case WM_CREATE:
        e = static_cast<TEsempio*>(reinterpret_cast<CREATESTRUCTW*>(lp)->lpCreateParams);
        SetWindowLongPtrW(h, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(e));
        e->finestra = e->ascolto.finestra = h;
        e->lista = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", nullptr,
                                   WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT, 0, 0, 0, 0, h,
                                   reinterpret_cast<HMENU>(IDC_PRESSIONI), nullptr, nullptr);
        SendMessageW(e->lista, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
        return 0;
    case WM_SIZE:
        if (e) MoveWindow(e->lista, 0, 0, LOWORD(lp), HIWORD(lp), TRUE);
        return 0;
    case WM_PRESSIONE:
        Aggiungi(*e, *std::unique_ptr<TPressione>(reinterpret_cast<TPressione*>(lp)));
        return 0;
    case WM_COMMAND:
        if (e && Comando(*e, LOWORD(wp))) return 0;
        break;
    case WM_DESTROY: {
        // Once notification is stopped nothing more is posted; the presses
        // still queued are freed.
        e->digit.StopCommNotification();
        MSG m;
        while (PeekMessageW(&m, h, WM_PRESSIONE, WM_PRESSIONE, PM_REMOVE))
            delete reinterpret_cast<TPressione*>(m.lParam);
        PostQuitMessage(0);
        return 0;
    }
    }
    return DefWindowProcW(h, msg, wp, lp);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE istanza, HINSTANCE, PWSTR, int mostra)
{
    TEsempio e;
    if (CaricaDati(e.dati))
        e.digit.SetDataDigit(e.dati);
    else
        e.digit.GetDataDigit(e.dati);  // the library's defaults: no tablet yet

    WNDCLASSW classe{};
    classe.lpfnWndProc = Finestra;
    classe.hInstance = istanza;
    classe.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    classe.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    classe.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    classe.lpszClassName = ESEMPIO_CLASSE;
    RegisterClassW(&classe);
    HWND h = CreateWindowExW(0, ESEMPIO_CLASSE, L"velmarin sample", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                             CW_USEDEFAULT, 640, 400, nullptr, Menu(), istanza, &e);
    if (!h) return 1;
    ShowWindow(h, mostra);
    UpdateWindow(h);
    Collega(e);  // the tablet of the last run, if there was one

    MSG m;
    while (GetMessageW(&m, nullptr, 0, 0) > 0) {
        TranslateMessage(&m);
        DispatchMessageW(&m);
    }
    return 0;  // ~CDigit ends the connection
}
