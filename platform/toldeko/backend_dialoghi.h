// Where dialogs meet a person: a backend is told when a dialog opens, changes
// and closes, and feeds its modal loop with input. One backend serves the
// whole process, installed with ImpostaBackendDialoghi like the handler of
// platform/winui.h. The scripted backend serves the tests; a front end
// installs its own.
#ifndef TOLDEKO_BACKEND_DIALOGHI_H
#define TOLDEKO_BACKEND_DIALOGHI_H

#include <chrono>

class TFinestraDialogo;

class TBackendDialoghi {
public:
    virtual ~TBackendDialoghi() = default;
    // The dialog is set up and its loop starts / its loop has ended. Called on
    // the dialog's thread, without its lock; nested dialogs open and close
    // inside their parent's.
    virtual void Aperto(TFinestraDialogo& finestra) = 0;
    virtual void Chiuso(TFinestraDialogo& finestra) = 0;
    // The loop has no input. The backend may post some (TFinestraDialogo::
    // Posta) and tells how long the loop may then sleep before asking again;
    // zero means until something wakes it.
    virtual std::chrono::milliseconds Inattivo(TFinestraDialogo& finestra) = 0;
    // Something the dialog shows changed; any thread, without the dialog's lock.
    virtual void Cambiato(TFinestraDialogo&) {}
};

// Installs a backend; null restores the default one, which answers every
// dialog with Escape: with nobody to show it to, a dialog is cancelled. The
// backend must outlive its use.
void ImpostaBackendDialoghi(TBackendDialoghi* backend);
TBackendDialoghi& BackendDialoghi();

#endif
