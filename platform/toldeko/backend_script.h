// A scripted backend: a test queues what a person would do, and the backend
// hands it out one step at a time to the dialog on top whenever that
// dialog's loop has nothing to do, so that a script runs on through nested
// dialogs in order. It keeps the state of every dialog as it was when its
// loop ended. A test thread may also wait for a dialog opened on another
// thread and read what it shows.
//
// Message boxes are not the backend's: they go through the handler of
// platform/winui.h.
#ifndef TOLDEKO_BACKEND_SCRIPT_H
#define TOLDEKO_BACKEND_SCRIPT_H

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "platform/toldeko/backend_dialoghi.h"
#include "platform/toldeko/finestra_dialogo.h"

struct TDialogoChiuso {
    TStatoDialogo stato;  // as the dialog showed it when its loop ended
    int risultato;        // what doModal returned
};

class TBackendScript : public TBackendDialoghi {
public:
    // A dialog left idle for this long with nothing queued gets Escape, and
    // Scaduti() counts it, so that a broken script ends instead of hanging.
    explicit TBackendScript(std::chrono::milliseconds scadenza = std::chrono::seconds(20));

    void Digita(int id, const std::string& testo);
    void Clic(int id);
    void Scegli(int id, int indice);
    void Invio();
    void Esc();
    void Comando(int id, unsigned codice);

    // Waits until the dialog of template `modello` is on top.
    bool AttendiDialogo(unsigned modello, std::chrono::milliseconds limite = std::chrono::seconds(10));
    // Waits until the dialog on top shows what `vede` looks for; it is asked
    // again whenever a dialog opens, closes or changes.
    bool AttendiMostrato(const std::function<bool(const TStatoDialogo&)>& vede,
                         std::chrono::milliseconds limite = std::chrono::seconds(10));
    // Waits until no dialog is open.
    bool AttendiNessuno(std::chrono::milliseconds limite = std::chrono::seconds(10));
    // The dialog on top as it is now; modello 0 when none is open.
    TStatoDialogo Corrente() const;
    std::vector<TDialogoChiuso> Chiusi() const;
    std::size_t AzioniInAttesa() const;
    int Scaduti() const;

    void Aperto(TFinestraDialogo& finestra) override;
    void Chiuso(TFinestraDialogo& finestra) override;
    std::chrono::milliseconds Inattivo(TFinestraDialogo& finestra) override;
    void Cambiato(TFinestraDialogo& finestra) override;

private:
    void Accoda(const TInput& input);

    const std::chrono::milliseconds scadenza;
    mutable std::mutex mutex;
    std::condition_variable cv;
    std::deque<TInput> azioni;
    std::vector<TFinestraDialogo*> aperti;  // nested dialogs, the top last
    std::vector<TDialogoChiuso> chiusi;
    std::chrono::steady_clock::time_point inattivoDa;
    bool inAttesa = false;
    int scaduti = 0;
};

#endif
