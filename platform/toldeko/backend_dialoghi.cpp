#include "backend_dialoghi.h"

#include <atomic>

#include "platform/toldeko/finestra_dialogo.h"

namespace {

class TBackendPredefinito : public TBackendDialoghi {
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

TBackendPredefinito predefinito;
std::atomic<TBackendDialoghi*> backend{&predefinito};

}  // namespace

void ImpostaBackendDialoghi(TBackendDialoghi* nuovo) { backend.store(nuovo ? nuovo : &predefinito); }

TBackendDialoghi& BackendDialoghi() { return *backend.load(); }
