#include "backend_dialoghi.h"

#include <atomic>

#include "platform/toldeko/finestra_dialogo.h"

namespace {

class TBackendAnnulla : public TBackendDialoghi {
public:
    void Aperto(TFinestraDialogo&) override {}
    void Chiuso(TFinestraDialogo&) override {}
    std::chrono::milliseconds Inattivo(TFinestraDialogo& finestra) override
    {
        TInput esc;
        esc.tipo = TTipoInput::esc;
        finestra.Posta(esc);
        return std::chrono::milliseconds(0);
    }
};

std::atomic<TBackendDialoghi*> backend{nullptr};

}  // namespace

TBackendDialoghi& BackendAnnulla()
{
    static TBackendAnnulla annulla;
    return annulla;
}

void ImpostaBackendDialoghi(TBackendDialoghi* nuovo) { backend.store(nuovo); }

TBackendDialoghi& BackendDialoghi()
{
    TBackendDialoghi* b = backend.load();
    return b ? *b : BackendPiattaforma();
}
