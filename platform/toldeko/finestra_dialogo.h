// The window that the toolkit makes for a dialog: the state of the dialog and
// of its controls, and the queue of the user's input that its modal loop
// waits on.
//
// The modal loop runs on the thread that called doModal, but the tablet's
// reader thread also ends dialogs and sets texts while the loop runs. So all
// state sits behind one mutex per window, input is posted to a queue guarded
// by the same mutex, and the loop sleeps on a condition variable. Handlers run
// without the lock. The ids and kinds of the controls never change after
// construction and are read without it.
//
// Handles are plain pointers here, not the platform's types, so that a
// backend built on the system's own windows can include this header.
#ifndef TOLDEKO_FINESTRA_DIALOGO_H
#define TOLDEKO_FINESTRA_DIALOGO_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/toldeko/stato_dialogo.h"

class TBackendDialoghi;

// What a person does to a dialog.
enum class TTipoInput {
    digita,   // types `testo` at the end of the edit `id`
    clic,     // clicks the button or radio `id`
    scegli,   // chooses entry `indice` of the list `id`
    invio,    // Enter: the default button, or id 1 when there is none
    esc,      // Escape or the window's close box: id 2
    comando,  // the platform raises command `codice` of control `id`
    testo,    // the edit `id` now holds `testo`, as edited in a window of the system
};

struct TInput {
    TTipoInput tipo = TTipoInput::esc;
    int id = 0;
    std::string testo;
    int indice = -1;
    unsigned codice = 0;
};

class TFinestraDialogo {
public:
    explicit TFinestraDialogo(const TModelloDialogo& modello);
    ~TFinestraDialogo();
    TFinestraDialogo(const TFinestraDialogo&) = delete;
    TFinestraDialogo& operator=(const TFinestraDialogo&) = delete;

    const TModelloDialogo& Modello() const { return modello; }

    // Index of the control `id`, -1 if the template has none. The index
    // addresses the controls below; -1 there stands for the dialog itself.
    int Indice(int id) const;
    TTipoElemento Tipo(int indice) const;
    int Id(int indice) const;
    void* Maniglia(int indice) const;
    // The window of handle `h` and the index in it; null when `h` is no
    // window of a live dialog.
    static TFinestraDialogo* DaManiglia(const void* h, int& indice);

    // The size in pixels of the control (-1: the dialog's client area) as
    // shown: from the template's dialog units, until a backend that shows
    // the dialog in real windows gives their sizes, before setupWindow.
    void ImpostaPixel(int indice, std::int32_t larghezza, std::int32_t altezza);
    void Pixel(int indice, std::int32_t& larghezza, std::int32_t& altezza) const;
    // The face on which a control's canvas starts.
    void ImpostaSfondo(std::uint32_t colore);

    // What an edit lets a person type: `verifica` answers whether a text may
    // stand in it (its validator). No verifier: every text.
    void ImpostaVerifica(int indice, std::function<bool(const std::string&)> verifica);
    bool Ammesso(int indice, const std::string& testo) const;

    std::string Testo(int indice) const;
    void ImpostaTesto(int indice, const std::string& testo);
    bool Abilitato(int indice) const;
    void Abilita(int indice, bool abilitato);
    int Check(int indice) const;
    void ImpostaCheck(int indice, int valore);
    // Checks the radio and unchecks the others of its group, as automatic
    // radios do on a click.
    void ScegliRadio(int indice);

    // Lists. Bad indexes answer -1 (the platform's CB_ERR) and change nothing.
    int AggiungiVoce(int indice, const std::string& testo);
    int ImpostaDato(int indice, int voce, std::intptr_t dato);
    std::intptr_t Dato(int indice, int voce) const;
    int NumVoci(int indice) const;
    int Selezione(int indice) const;
    int ImpostaSelezione(int indice, int voce);

    // Drawing on control `indice`: `azione` works on its canvas under the
    // lock. The first drawing makes the canvas at the control's size in
    // pixels, the dialog's face inside and, for a black frame, its border.
    void Disegna(int indice, const std::function<void(TTela&)>& azione);
    TTela Tela(int indice) const;
    // Drawing by strokes, for a view that draws them again on a window of
    // its own: once SeguiTratti is on, each Traccia is kept until the view
    // takes it (PrendiTratti), or until it takes the whole canvas to paint
    // (TelaMostrata), which has every stroke in it already. So the window
    // gets each stroke once, either way.
    void Traccia(int indice, const TTratto& tratto, const std::function<void(TTela&)>& azione);
    void SeguiTratti(bool segui);
    std::vector<TTratto> PrendiTratti(int indice);
    TTela TelaMostrata(int indice);

    TStatoDialogo Fotografia() const;

    // The modal loop. Apri starts a run: no end value, an empty queue.
    void Apri();
    void Posta(const TInput& input);
    // Ends the run with `valore`; the first end value of a run stands.
    void Termina(int valore);
    bool Terminato() const;
    int ValoreFine() const;
    // Lets the loop ask its backend for input again.
    void Sveglia();
    // Whether the loop has something to do: an input, its end or a wake-up.
    bool Risvegliato() const;
    // Whether input waits in the queue.
    bool InputInCoda() const;
    // Waits for the next input; false once the run has ended.
    bool ProssimoInput(TInput& input, TBackendDialoghi& backend);

private:
    struct TManiglia {
        TFinestraDialogo* finestra;
        int indice;
    };

    TStatoElemento& El(int indice);
    const TStatoElemento& El(int indice) const;
    void Cambiato();
    void Svegliato();

    const TModelloDialogo& modello;
    mutable std::mutex mutex;
    std::condition_variable cv;
    TStatoDialogo stato;
    std::vector<std::unique_ptr<TManiglia>> maniglie;  // [0] the dialog, [i + 1] control i
    std::vector<std::function<bool(const std::string&)>> verifiche;  // per control
    std::vector<std::vector<TTratto>> tratti;                        // per control, not yet taken
    bool seguiTratti = false;
    std::deque<TInput> coda;
    bool finito = false;
    bool svegliato = false;
    int valoreFine = 0;
};

#endif
