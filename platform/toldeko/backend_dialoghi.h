// Where dialogs meet a person: a backend is told when a dialog opens, changes
// and closes, and feeds its modal loop with input. One backend serves the
// whole process, installed with ImpostaBackendDialoghi like the handler of
// platform/winui.h. The scripted backend serves the tests, the terminal one
// the host tool; on Windows the default shows real dialogs of the system
// (backend_win32.cpp), elsewhere it cancels every dialog.
#ifndef TOLDEKO_BACKEND_DIALOGHI_H
#define TOLDEKO_BACKEND_DIALOGHI_H

#include <chrono>

class TFinestraDialogo;

class TBackendDialoghi {
public:
    virtual ~TBackendDialoghi() = default;
    // The dialog is about to be set up: a backend that shows it in windows
    // of the system makes them now, so that setupWindow finds their sizes.
    virtual void Creato(TFinestraDialogo&) {}
    // setupWindow failed after Creato: the dialog never opens.
    virtual void Annullato(TFinestraDialogo&) {}
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
    // The loop has something to do: an input, its end or a wake-up. Any
    // thread, without the dialog's lock; for a backend whose Inattivo waits
    // on something else than the dialog (the system's message queue).
    virtual void Svegliato(TFinestraDialogo&) {}
};

// Installs a backend; null restores the platform's default. The backend must
// outlive its use.
void ImpostaBackendDialoghi(TBackendDialoghi* backend);
TBackendDialoghi& BackendDialoghi();

// The backend that answers every dialog with Escape: with nobody to show it
// to, a dialog is cancelled.
TBackendDialoghi& BackendAnnulla();
// The platform's default: real dialogs of the system on Windows
// (backend_win32.cpp), BackendAnnulla elsewhere (backend_piattaforma_posix.cpp).
TBackendDialoghi& BackendPiattaforma();

#endif
