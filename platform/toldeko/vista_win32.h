// The view of one toolkit dialog in a real dialog of the system, for the
// Win32 backend. The toolkit's state stays the truth; the real dialog shows
// it and turns what a person does to its controls into the toolkit's input.
//
// All of it runs on the dialog's thread, the one that made the window,
// except Aggiorna and Sveglia, which any thread may call: they only post to
// the window. So nothing here ever waits for the dialog's thread.
//
// - What the person does: a click on a button or radio, a choice or the
//   closing of a list, an edit's new text, Enter, Escape and the close box
//   become TInput posted to the toolkit's window; the real control has
//   already changed, and the toolkit follows. An edit lets through only the
//   characters its validator takes (WM_CHAR is filtered); a text set whole
//   (pasted, WM_SETTEXT) that the validator refuses is put back.
// - What the toolkit changes (texts, checks, enabling, lists, selections,
//   drawings) reaches the real controls when the window takes the posted
//   update. Only what the toolkit changed is written: the update compares
//   the toolkit's state with the one last shown, in which what the person
//   did counts as shown already. An update that finds input still queued
//   waits until the toolkit has taken it, so that it never puts back what
//   the person has just typed.
#ifndef TOLDEKO_VISTA_WIN32_H
#define TOLDEKO_VISTA_WIN32_H

#include <windows.h>

#include <atomic>
#include <vector>

#include "platform/toldeko/finestra_dialogo.h"

class TVistaDialogo {
public:
    // Makes the real dialog, hidden, owned by `proprietario` (null: none),
    // and gives the toolkit its real sizes. Creata() is false when the
    // system made no window (no display).
    TVistaDialogo(TFinestraDialogo& finestra, HWND proprietario);
    ~TVistaDialogo();
    TVistaDialogo(const TVistaDialogo&) = delete;
    TVistaDialogo& operator=(const TVistaDialogo&) = delete;

    bool Creata() const { return dialogo != nullptr; }
    HWND Dialogo() const { return dialogo; }
    DWORD Thread() const { return thread; }

    // Shows the dialog as the toolkit holds it, its owner disabled.
    void Mostra();
    // Runs the thread's messages until the toolkit's loop has something to
    // do. A WM_QUIT cancels the dialog and is posted again when it closes.
    void Pompa();

    // Any thread: the toolkit's state changed / its loop has work.
    void Aggiorna();
    void Sveglia();

    static LRESULT CALLBACK ProceduraEdit(HWND h, UINT msg, WPARAM w, LPARAM l);
    static LRESULT CALLBACK ProceduraCornice(HWND h, UINT msg, WPARAM w, LPARAM l);

private:
    static INT_PTR CALLBACK Procedura(HWND h, UINT msg, WPARAM w, LPARAM l);
    static TVistaDialogo* Di(HWND controllo, int& indice);
    bool Comando(int id, int codice, HWND controllo);
    void Posta(TTipoInput tipo, int id, int indice = -1, unsigned codice = 0, const std::string& testo = {});
    void Sincronizza();
    void SincronizzaElemento(int indice, const TStatoElemento& e, TStatoElemento& m);
    void LeggiRadio();
    void Sottoclassa(HWND controllo, WNDPROC procedura);

    TFinestraDialogo& finestra;
    HWND dialogo = nullptr;
    HWND proprietario;
    bool proprietarioDisabilitato = false;
    DWORD thread;
    std::vector<HWND> controlli;  // in template order
    TStatoDialogo mostrato;       // what the real dialog shows
    bool rinviato = false;        // an update waits for the queued input
    bool aggiornando = false;     // our own changes raise no input
    std::atomic<bool> aggiornamentoInCoda{false};
    bool uscita = false;          // a WM_QUIT came
    WPARAM codiceUscita = 0;
};

#endif
