#include "backend_script.h"

namespace {

TInput Input(TTipoInput tipo, int id = 0, const std::string& testo = "", int indice = -1, unsigned codice = 0)
{
    return TInput{tipo, id, testo, indice, codice};
}

// How often an idle dialog asks again, to notice the idle limit.
constexpr std::chrono::milliseconds passoAttesa(50);

}  // namespace

TBackendScript::TBackendScript(std::chrono::milliseconds limite) : scadenza(limite) {}

void TBackendScript::Digita(int id, const std::string& testo) { Accoda(Input(TTipoInput::digita, id, testo)); }
void TBackendScript::Clic(int id) { Accoda(Input(TTipoInput::clic, id)); }
void TBackendScript::Scegli(int id, int indice) { Accoda(Input(TTipoInput::scegli, id, "", indice)); }
void TBackendScript::Invio() { Accoda(Input(TTipoInput::invio)); }
void TBackendScript::Esc() { Accoda(Input(TTipoInput::esc)); }
void TBackendScript::Comando(int id, unsigned codice) { Accoda(Input(TTipoInput::comando, id, "", -1, codice)); }

// Lock order: the backend's mutex before a dialog's.
void TBackendScript::Accoda(const TInput& input)
{
    std::lock_guard<std::mutex> g(mutex);
    azioni.push_back(input);
    if (!aperti.empty()) aperti.back()->Sveglia();
}

bool TBackendScript::AttendiDialogo(unsigned modello, std::chrono::milliseconds limite)
{
    std::unique_lock<std::mutex> lk(mutex);
    return cv.wait_for(lk, limite, [&] { return !aperti.empty() && aperti.back()->Modello().id == modello; });
}

bool TBackendScript::AttendiMostrato(const std::function<bool(const TStatoDialogo&)>& vede,
                                     std::chrono::milliseconds limite)
{
    std::unique_lock<std::mutex> lk(mutex);
    return cv.wait_for(lk, limite, [&] { return vede(aperti.empty() ? TStatoDialogo{} : aperti.back()->Fotografia()); });
}

bool TBackendScript::AttendiNessuno(std::chrono::milliseconds limite)
{
    std::unique_lock<std::mutex> lk(mutex);
    return cv.wait_for(lk, limite, [&] { return aperti.empty(); });
}

TStatoDialogo TBackendScript::Corrente() const
{
    std::lock_guard<std::mutex> g(mutex);
    return aperti.empty() ? TStatoDialogo{} : aperti.back()->Fotografia();
}

std::vector<TDialogoChiuso> TBackendScript::Chiusi() const
{
    std::lock_guard<std::mutex> g(mutex);
    return chiusi;
}

std::size_t TBackendScript::AzioniInAttesa() const
{
    std::lock_guard<std::mutex> g(mutex);
    return azioni.size();
}

int TBackendScript::Scaduti() const
{
    std::lock_guard<std::mutex> g(mutex);
    return scaduti;
}

void TBackendScript::Aperto(TFinestraDialogo& finestra)
{
    std::lock_guard<std::mutex> g(mutex);
    aperti.push_back(&finestra);
    inAttesa = false;
    cv.notify_all();
}

void TBackendScript::Chiuso(TFinestraDialogo& finestra)
{
    std::lock_guard<std::mutex> g(mutex);
    chiusi.push_back({finestra.Fotografia(), finestra.ValoreFine()});
    for (auto it = aperti.begin(); it != aperti.end(); ++it) {
        if (*it != &finestra) continue;
        aperti.erase(it);
        break;
    }
    inAttesa = false;
    cv.notify_all();
}

// Called outside the dialog's lock, so the backend's may be taken here.
void TBackendScript::Cambiato(TFinestraDialogo&)
{
    std::lock_guard<std::mutex> g(mutex);
    cv.notify_all();
}

std::chrono::milliseconds TBackendScript::Inattivo(TFinestraDialogo& finestra)
{
    std::lock_guard<std::mutex> g(mutex);
    const auto adesso = std::chrono::steady_clock::now();
    if (!azioni.empty()) {
        finestra.Posta(azioni.front());
        azioni.pop_front();
        inAttesa = false;
        return passoAttesa;
    }
    if (!inAttesa) {
        inAttesa = true;
        inattivoDa = adesso;
    } else if (adesso - inattivoDa >= scadenza) {
        ++scaduti;
        inAttesa = false;
        finestra.Posta(Input(TTipoInput::esc));
    }
    return passoAttesa;
}
