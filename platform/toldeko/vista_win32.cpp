#include "platform/toldeko/vista_win32.h"

#include <string>

#include "platform/testo_win32.h"
#include "platform/toldeko/modello_win32.h"
#include "platform/toldeko/tela_win32.h"

namespace {

constexpr UINT msgAggiorna = WM_APP + 1;  // the toolkit's state changed
constexpr UINT msgSveglia = WM_APP + 2;   // the toolkit's loop has work
const wchar_t* const proprietaProcedura = L"velmarin.procedura";

std::string TestoDi(HWND h)
{
    const int n = GetWindowTextLengthW(h);
    std::wstring w(static_cast<std::size_t>(n) + 1, L'\0');
    const int letti = GetWindowTextW(h, &w[0], n + 1);
    return Stretto(w.c_str(), letti);
}

bool StesseVoci(const std::vector<TVoceLista>& a, const std::vector<TVoceLista>& b)
{
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i].testo != b[i].testo) return false;
    return true;
}

WNDPROC ProceduraOriginale(HWND h) { return reinterpret_cast<WNDPROC>(GetPropW(h, proprietaProcedura)); }

}  // namespace

TVistaDialogo::TVistaDialogo(TFinestraDialogo& f, HWND p) : finestra(f), proprietario(p), thread(GetCurrentThreadId())
{
    mostrato = f.Fotografia();  // as the template makes the controls
    const std::vector<WORD> modello = ModelloDiSistema(f.Modello());
    CreateDialogIndirectParamW(GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATEW>(modello.data()),
                               proprietario, &TVistaDialogo::Procedura, reinterpret_cast<LPARAM>(this));
    if (!dialogo) return;
    // The children stand in template order.
    const std::size_t n = f.Modello().numElementi;
    for (HWND c = GetWindow(dialogo, GW_CHILD); c && controlli.size() < n; c = GetWindow(c, GW_HWNDNEXT))
        controlli.push_back(c);
    controlli.resize(n, nullptr);
    RECT r;
    GetClientRect(dialogo, &r);
    finestra.ImpostaPixel(-1, r.right, r.bottom);
    for (std::size_t i = 0; i < n; ++i) {
        HWND c = controlli[i];
        if (!c) continue;
        GetClientRect(c, &r);
        finestra.ImpostaPixel(static_cast<int>(i), r.right, r.bottom);
        const TElementoModello& e = f.Modello().elementi[i];
        if (e.tipo == TTipoElemento::edit) Sottoclassa(c, &TVistaDialogo::ProceduraEdit);
        if (e.tipo == TTipoElemento::cornice && e.id != idNessuno) Sottoclassa(c, &TVistaDialogo::ProceduraCornice);
    }
    finestra.ImpostaSfondo(GetSysColor(COLOR_BTNFACE));
    finestra.SeguiTratti(true);
}

TVistaDialogo::~TVistaDialogo()
{
    finestra.SeguiTratti(false);
    // The owner comes back before the dialog goes, so that it takes the
    // activation back.
    if (proprietarioDisabilitato) EnableWindow(proprietario, TRUE);
    if (dialogo) DestroyWindow(dialogo);
    if (uscita) PostQuitMessage(static_cast<int>(codiceUscita));
}

void TVistaDialogo::Sottoclassa(HWND controllo, WNDPROC procedura)
{
    const LONG_PTR prima = SetWindowLongPtrW(controllo, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedura));
    SetPropW(controllo, proprietaProcedura, reinterpret_cast<HANDLE>(prima));
}

void TVistaDialogo::Mostra()
{
    Sincronizza();
    if (proprietario && IsWindowEnabled(proprietario)) {
        EnableWindow(proprietario, FALSE);
        proprietarioDisabilitato = true;
    }
    ShowWindow(dialogo, SW_SHOW);
    SetForegroundWindow(dialogo);
}

// MWMO_INPUTAVAILABLE: a message already seen by PeekMessage still ends the
// wait. Since Posta, Termina and Sveglia post to the window after they
// change the toolkit's state, the check before the wait cannot miss one.
void TVistaDialogo::Pompa()
{
    if (rinviato) Sincronizza();
    for (;;) {
        MSG m;
        while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
            if (m.message == WM_QUIT) {
                uscita = true;
                codiceUscita = m.wParam;
                Posta(TTipoInput::esc, IDCANCEL);
                return;
            }
            if (!IsDialogMessageW(dialogo, &m)) {
                TranslateMessage(&m);
                DispatchMessageW(&m);
            }
            if (finestra.Risvegliato()) return;
        }
        if (finestra.Risvegliato()) return;
        MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

void TVistaDialogo::Aggiorna()
{
    if (aggiornamentoInCoda.exchange(true)) return;
    if (!PostMessageW(dialogo, msgAggiorna, 0, 0)) aggiornamentoInCoda = false;
}

void TVistaDialogo::Sveglia() { PostMessageW(dialogo, msgSveglia, 0, 0); }

void TVistaDialogo::Posta(TTipoInput tipo, int id, int indice, unsigned codice, const std::string& testo)
{
    finestra.Posta(TInput{tipo, id, testo, indice, codice});
}

void TVistaDialogo::Sincronizza()
{
    aggiornamentoInCoda = false;
    rinviato = finestra.InputInCoda();
    if (rinviato) return;
    const TStatoDialogo s = finestra.Fotografia();
    aggiornando = true;
    if (s.titolo != mostrato.titolo) SetWindowTextW(dialogo, Largo(s.titolo).c_str());
    mostrato.titolo = s.titolo;
    for (std::size_t i = 0; i < s.elementi.size() && i < controlli.size(); ++i)
        SincronizzaElemento(static_cast<int>(i), s.elementi[i], mostrato.elementi[i]);
    aggiornando = false;
}

void TVistaDialogo::SincronizzaElemento(int indice, const TStatoElemento& e, TStatoElemento& m)
{
    HWND h = controlli[static_cast<std::size_t>(indice)];
    if (!h) return;
    if (e.tipo == TTipoElemento::combo) {
        if (!StesseVoci(e.voci, m.voci)) {
            SendMessageW(h, CB_RESETCONTENT, 0, 0);
            for (const TVoceLista& v : e.voci)
                SendMessageW(h, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Largo(v.testo).c_str()));
            m.selezione = -1;
        }
        if (e.selezione != m.selezione) SendMessageW(h, CB_SETCURSEL, static_cast<WPARAM>(e.selezione), 0);
    } else if (e.tipo != TTipoElemento::cornice && e.testo != m.testo) {
        SetWindowTextW(h, Largo(e.testo).c_str());
    }
    if (e.tipo == TTipoElemento::radio && e.check != m.check)
        SendMessageW(h, BM_SETCHECK, e.check ? BST_CHECKED : BST_UNCHECKED, 0);
    if (e.abilitato != m.abilitato) EnableWindow(h, e.abilitato ? TRUE : FALSE);
    if (!e.tela.Vuota()) {
        const std::vector<TTratto> tratti = finestra.PrendiTratti(indice);
        if (!tratti.empty()) DisegnaTratti(h, tratti);
    }
    m.testo = e.testo;
    m.check = e.check;
    m.abilitato = e.abilitato;
    m.voci = e.voci;
    m.selezione = e.selezione;
}

// An automatic radio has checked itself and unchecked its group.
void TVistaDialogo::LeggiRadio()
{
    for (std::size_t i = 0; i < controlli.size(); ++i)
        if (mostrato.elementi[i].tipo == TTipoElemento::radio && controlli[i])
            mostrato.elementi[i].check = SendMessageW(controlli[i], BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
}

// What a person did to a control, as the toolkit's input. The real control
// has changed already; the toolkit follows it.
bool TVistaDialogo::Comando(int id, int codice, HWND controllo)
{
    if (aggiornando) return true;
    const int i = finestra.Indice(id);
    if (i >= 0 && controllo) {
        switch (finestra.Tipo(i)) {
        case TTipoElemento::edit:
            if (codice == EN_CHANGE) {
                mostrato.elementi[static_cast<std::size_t>(i)].testo = TestoDi(controllo);
                Posta(TTipoInput::testo, id, -1, 0, mostrato.elementi[static_cast<std::size_t>(i)].testo);
            }
            return true;
        case TTipoElemento::combo:
            if (codice == CBN_SELCHANGE) {
                const LRESULT voce = SendMessageW(controllo, CB_GETCURSEL, 0, 0);
                if (voce == CB_ERR) return true;
                mostrato.elementi[static_cast<std::size_t>(i)].selezione = static_cast<int>(voce);
                Posta(TTipoInput::scegli, id, static_cast<int>(voce));
            } else if (codice == CBN_CLOSEUP) {
                Posta(TTipoInput::comando, id, -1, CBN_CLOSEUP);
            }
            return true;
        case TTipoElemento::pulsante:
        case TTipoElemento::predefinito:
        case TTipoElemento::radio:
            if (codice != BN_CLICKED) return true;
            LeggiRadio();
            Posta(TTipoInput::clic, id);
            return true;
        default:
            return true;
        }
    }
    // Enter and Escape, through the dialog manager, or the dialog's own
    // commands sent from outside.
    if (codice != BN_CLICKED) return true;
    if (id == IDOK) Posta(TTipoInput::invio, 0);
    if (id == IDCANCEL) Posta(TTipoInput::esc, 0);
    return true;
}

INT_PTR CALLBACK TVistaDialogo::Procedura(HWND h, UINT msg, WPARAM w, LPARAM l)
{
    if (msg == WM_INITDIALOG) {
        auto* vista = reinterpret_cast<TVistaDialogo*>(l);
        vista->dialogo = h;
        SetWindowLongPtrW(h, DWLP_USER, l);
        return TRUE;
    }
    auto* vista = reinterpret_cast<TVistaDialogo*>(GetWindowLongPtrW(h, DWLP_USER));
    if (!vista) return FALSE;
    switch (msg) {
    case WM_COMMAND:
        return vista->Comando(LOWORD(w), HIWORD(w), reinterpret_cast<HWND>(l));
    case WM_CLOSE:
        vista->Posta(TTipoInput::esc, 0);
        return TRUE;
    case msgAggiorna:
        vista->Sincronizza();
        return TRUE;
    case msgSveglia:
        return TRUE;
    default:
        return FALSE;
    }
}

TVistaDialogo* TVistaDialogo::Di(HWND controllo, int& indice)
{
    auto* vista = reinterpret_cast<TVistaDialogo*>(GetWindowLongPtrW(GetParent(controllo), DWLP_USER));
    indice = vista ? vista->finestra.Indice(GetDlgCtrlID(controllo)) : -1;
    return indice >= 0 ? vista : nullptr;
}

// A typed character that the edit's validator refuses goes no further.
// Control characters (Backspace, the clipboard's keys) pass; a pasted text
// is checked whole when it reaches the toolkit.
LRESULT CALLBACK TVistaDialogo::ProceduraEdit(HWND h, UINT msg, WPARAM w, LPARAM l)
{
    const WNDPROC originale = ProceduraOriginale(h);
    int indice = -1;
    TVistaDialogo* vista = msg == WM_CHAR && w >= 0x20 ? Di(h, indice) : nullptr;
    if (vista) {
        const int n = GetWindowTextLengthW(h);
        std::wstring testo(static_cast<std::size_t>(n) + 1, L'\0');
        testo.resize(static_cast<std::size_t>(GetWindowTextW(h, &testo[0], n + 1)));
        DWORD da = 0, a = 0;
        SendMessageW(h, EM_GETSEL, reinterpret_cast<WPARAM>(&da), reinterpret_cast<LPARAM>(&a));
        if (da > testo.size()) da = static_cast<DWORD>(testo.size());
        if (a < da || a > testo.size()) a = da;
        testo.replace(da, a - da, 1, static_cast<wchar_t>(w));
        if (!vista->finestra.Ammesso(indice, Stretto(testo.c_str(), static_cast<int>(testo.size())))) return 0;
    }
    if (msg == WM_NCDESTROY) RemovePropW(h, proprietaProcedura);
    return CallWindowProcW(originale, h, msg, w, l);
}

// Once the toolkit has drawn on the frame, the frame shows its canvas: the
// strokes not yet drawn are in it, and are dropped.
LRESULT CALLBACK TVistaDialogo::ProceduraCornice(HWND h, UINT msg, WPARAM w, LPARAM l)
{
    const WNDPROC originale = ProceduraOriginale(h);
    int indice = -1;
    TVistaDialogo* vista = msg == WM_PAINT || msg == WM_ERASEBKGND ? Di(h, indice) : nullptr;
    if (vista && msg == WM_PAINT) {
        const TTela tela = vista->finestra.TelaMostrata(indice);
        if (!tela.Vuota()) {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(h, &ps);
            DipingiTela(dc, tela);
            EndPaint(h, &ps);
            return 0;
        }
    }
    if (vista && msg == WM_ERASEBKGND && !vista->finestra.Tela(indice).Vuota()) return 1;
    if (msg == WM_NCDESTROY) RemovePropW(h, proprietaProcedura);
    return CallWindowProcW(originale, h, msg, w, l);
}
