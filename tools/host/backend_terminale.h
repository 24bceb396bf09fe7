// The dialogs of the toolkit drawn in a terminal and worked with the
// keyboard. The dialog on top is drawn by the toolkit's text renderer, the
// control with the focus in reverse video, a line of keys below it:
//
//   Tab / Shift-Tab             focus to the next / previous control; a
//                               radio group is one stop, entered at its
//                               checked radio
//   Down, Right / Up, Left      next / previous radio of the group, round;
//                               elsewhere like Tab / Shift-Tab, except that
//   Left, Right                 on a list give the previous / next entry
//   Space                       clicks a button or radio, next entry of a list
//   Enter                       a focused push button, else the default
//                               button; nothing in a dialog without one
//   Escape                      cancels
//   characters, Backspace       type into a focused entry field
//
// A dialog opens with the focus on its first control that is not Annulla,
// and with none when Annulla is all it has: a key pressed once too often
// never throws work away.
// The lines under the dialog name the keys that work on the focused control
// and what the dialog waits for. When a nested dialog closes, the focus goes
// back to the default button, so that Enter takes the dialog as it stands.
// Message boxes, beeps and the wait cursor come through
// TInterfacciaTerminale, which draws over the same screen.
//
// What the tablet changes in a dialog arrives on the reader thread; it is
// only noted there, and drawn from the dialog's own loop, once per change
// and no faster than the terminal takes it.
#ifndef VELMARIN_HOST_BACKEND_TERMINALE_H
#define VELMARIN_HOST_BACKEND_TERMINALE_H

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "platform/toldeko/backend_dialoghi.h"
#include "platform/toldeko/disegno_testo.h"
#include "platform/toldeko/finestra_dialogo.h"
#include "terminale.h"

bool PrendeFuoco(const TStatoElemento& e);
// Where the focus is when a dialog opens: an index into s.elementi, or -1.
int PrimoFuoco(const TStatoDialogo& s);

// What one key does to a dialog as it stands: the input to post (false when
// none) and the new focus, an index into stato.elementi or -1.
bool InputPerTasto(const TStatoDialogo& stato, const TLettura& tasto, int& fuoco, TInput& input);

class TBackendTerminale : public TBackendDialoghi {
public:
    explicit TBackendTerminale(TTerminale& terminale);

    void Aperto(TFinestraDialogo& finestra) override;
    void Chiuso(TFinestraDialogo& finestra) override;
    std::chrono::milliseconds Inattivo(TFinestraDialogo& finestra) override;
    void Cambiato(TFinestraDialogo& finestra) override;

    // A line shown under the dialog until the next key (a refused entry).
    void Avviso(const std::string& testo);
    // A mark shown while the program is busy; empty when it is done.
    void Occupato(const std::string& testo);
    // A message box drawn over the dialog; empty when it is answered.
    void Riquadro(const std::vector<std::string>& righe, const std::string& tasti);
    // Called on the dialog's thread when a dialog of template `modello` opens.
    void AlAperto(std::function<void(unsigned modello)> f);
    // The host's words under the dialog of template `modello`.
    void Suggerimento(std::function<std::string(unsigned modello)> f);
    // The question asked before Escape or Annulla closes the dialog of
    // template `modello`; empty: none, it closes at once.
    void ConfermaAnnulla(std::function<std::string(unsigned modello)> f);
    // A line drawn above every dialog: which tablet the dialogs work on.
    void Intestazione(const std::string& testo);
    // The template of the dialog on top; 0 when none is open.
    unsigned Modello();
    // The dialog on top or, when none is, the one that has just closed: a
    // refusal between two dialogs concerns it.
    unsigned ModelloRecente();
    // Draws the dialog on top again, or clears the screen when none is open.
    void Ridisegna();
    // How many times a screen was drawn.
    int Disegni() const { return disegni; }

private:
    void RidisegnaSeCambiato();
    bool Conferma(const std::string& domanda);

    TTerminale& terminale;
    std::mutex mutex;
    std::vector<TFinestraDialogo*> aperti;
    std::map<TFinestraDialogo*, int> fuoco;
    std::string avviso, occupato;
    unsigned ultimoChiuso = 0;
    std::chrono::steady_clock::time_point quandoChiuso{};
    std::vector<std::string> riquadro;
    std::string tastiRiquadro;
    std::string intestazione;
    std::function<void(unsigned)> alAperto;
    std::function<std::string(unsigned)> suggerimento;
    std::function<std::string(unsigned)> confermaAnnulla;
    std::atomic<bool> sporco{false};
    std::atomic<int> disegni{0};
    std::chrono::steady_clock::time_point ultimoDisegno{};
    std::chrono::steady_clock::duration durataDisegno{};
};

#endif
