// The Windows default backend: each toolkit dialog shows as a real modal
// dialog of the system (TVistaDialogo), made from the same template.
//
// The toolkit's modal loop stays the one loop: the real dialog is modeless
// (CreateDialogIndirectParamW), its owner disabled while it is open, and
// Inattivo pumps the thread's messages, through IsDialogMessageW, until the
// toolkit has input, an end or a wake-up. Posta, Termina and Sveglia reach
// the pump by a message posted to the dialog (Svegliato); changes of the
// state, which the tablet's reader thread makes too, by another (Cambiato),
// which the dialog's own thread turns into changes of its controls. Nothing
// here sends to the dialog from another thread, so a thread that the host
// makes wait (StopCommNotification waits for the reader) never waits on it.
//
// A dialog that the system cannot make (no display) is cancelled, as with
// no backend.
#include <windows.h>

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/toldeko/backend_dialoghi.h"
#include "platform/toldeko/vista_win32.h"

namespace {

class TBackendWin32 : public TBackendDialoghi {
public:
    void Creato(TFinestraDialogo& f) override;
    void Annullato(TFinestraDialogo& f) override { Chiuso(f); }
    void Aperto(TFinestraDialogo& f) override;
    void Chiuso(TFinestraDialogo& f) override;
    std::chrono::milliseconds Inattivo(TFinestraDialogo& f) override;
    void Cambiato(TFinestraDialogo& f) override;
    void Svegliato(TFinestraDialogo& f) override;

private:
    using TViste = std::vector<std::pair<TFinestraDialogo*, std::unique_ptr<TVistaDialogo>>>;
    TViste::iterator Cerca(TFinestraDialogo& f);
    // The dialog's view, if it has one; for its own thread only.
    TVistaDialogo* Vista(TFinestraDialogo& f);
    // The owner of a new dialog on this thread: the last dialog made on it
    // and still open (a nested dialog is owned by its parent), else the
    // thread's active window, the host's.
    HWND Proprietario();

    std::mutex mutex;  // guards viste; views post to their windows under it
    TViste viste;      // in the order they were made
};

TBackendWin32::TViste::iterator TBackendWin32::Cerca(TFinestraDialogo& f)
{
    for (auto it = viste.begin(); it != viste.end(); ++it)
        if (it->first == &f) return it;
    return viste.end();
}

TVistaDialogo* TBackendWin32::Vista(TFinestraDialogo& f)
{
    std::lock_guard<std::mutex> g(mutex);
    auto it = Cerca(f);
    return it == viste.end() ? nullptr : it->second.get();
}

HWND TBackendWin32::Proprietario()
{
    const DWORD questo = GetCurrentThreadId();
    {
        std::lock_guard<std::mutex> g(mutex);
        for (auto it = viste.rbegin(); it != viste.rend(); ++it)
            if (it->second->Thread() == questo && it->second->Creata()) return it->second->Dialogo();
    }
    return GetActiveWindow();
}

void TBackendWin32::Creato(TFinestraDialogo& f)
{
    auto vista = std::make_unique<TVistaDialogo>(f, Proprietario());
    std::lock_guard<std::mutex> g(mutex);
    viste.emplace_back(&f, std::move(vista));
}

void TBackendWin32::Aperto(TFinestraDialogo& f)
{
    TVistaDialogo* v = Vista(f);
    if (v && v->Creata()) v->Mostra();
}

void TBackendWin32::Chiuso(TFinestraDialogo& f)
{
    std::unique_ptr<TVistaDialogo> vista;
    {
        std::lock_guard<std::mutex> g(mutex);
        auto it = Cerca(f);
        if (it == viste.end()) return;
        vista = std::move(it->second);
        viste.erase(it);
    }
    // Destroyed outside the lock: destroying sends the dialog messages.
}

std::chrono::milliseconds TBackendWin32::Inattivo(TFinestraDialogo& f)
{
    TVistaDialogo* v = Vista(f);
    if (!v || !v->Creata()) return BackendAnnulla().Inattivo(f);
    v->Pompa();
    return std::chrono::milliseconds(0);
}

void TBackendWin32::Cambiato(TFinestraDialogo& f)
{
    std::lock_guard<std::mutex> g(mutex);
    auto it = Cerca(f);
    if (it != viste.end() && it->second->Creata()) it->second->Aggiorna();
}

// The dialog's own thread checks the toolkit before it waits: no message.
void TBackendWin32::Svegliato(TFinestraDialogo& f)
{
    std::lock_guard<std::mutex> g(mutex);
    auto it = Cerca(f);
    if (it != viste.end() && it->second->Creata() && it->second->Thread() != GetCurrentThreadId())
        it->second->Sveglia();
}

}  // namespace

TBackendDialoghi& BackendPiattaforma()
{
    static TBackendWin32 backend;
    return backend;
}
