#include "finestra_dialogo.h"

#include <stdexcept>
#include <utility>
#include <unordered_set>

#include "platform/toldeko/backend_dialoghi.h"

namespace {

// Handles of live windows, so that a handle from outside is checked before
// it is followed.
std::mutex mutexManiglie;
std::unordered_set<const void*> maniglieVive;

bool IsLista(TTipoElemento t) { return t == TTipoElemento::combo; }

}  // namespace

TFinestraDialogo::TFinestraDialogo(const TModelloDialogo& m) : modello(m)
{
    stato.modello = m.id;
    stato.titolo = m.titolo ? m.titolo : "";
    stato.cx = m.cx;
    stato.cy = m.cy;
    stato.larghezzaPixel = PixelX(m.cx);
    stato.altezzaPixel = PixelY(m.cy);
    stato.elementi.reserve(m.numElementi);
    for (std::size_t i = 0; i < m.numElementi; ++i) {
        const TElementoModello& em = m.elementi[i];
        TStatoElemento e;
        e.id = em.id;
        e.tipo = em.tipo;
        e.stile = em.stile;
        e.x = em.x;
        e.y = em.y;
        e.cx = em.cx;
        e.cy = em.cy;
        e.larghezzaPixel = PixelX(em.cx);
        e.altezzaPixel = PixelY(em.cy);
        e.testo = em.testo ? em.testo : "";
        stato.elementi.push_back(e);
    }
    verifiche.resize(m.numElementi);
    tratti.resize(m.numElementi);
    for (int i = -1; i < static_cast<int>(m.numElementi); ++i)
        maniglie.push_back(std::make_unique<TManiglia>(TManiglia{this, i}));
    std::lock_guard<std::mutex> g(mutexManiglie);
    for (const auto& h : maniglie) maniglieVive.insert(h.get());
}

TFinestraDialogo::~TFinestraDialogo()
{
    std::lock_guard<std::mutex> g(mutexManiglie);
    for (const auto& h : maniglie) maniglieVive.erase(h.get());
}

int TFinestraDialogo::Indice(int id) const
{
    if (id == idNessuno) return -1;
    for (std::size_t i = 0; i < stato.elementi.size(); ++i)
        if (stato.elementi[i].id == id) return static_cast<int>(i);
    return -1;
}

TTipoElemento TFinestraDialogo::Tipo(int indice) const { return El(indice).tipo; }

int TFinestraDialogo::Id(int indice) const { return indice < 0 ? 0 : El(indice).id; }

void* TFinestraDialogo::Maniglia(int indice) const
{
    if (indice < -1 || indice >= static_cast<int>(stato.elementi.size())) return nullptr;
    return maniglie[static_cast<std::size_t>(indice + 1)].get();
}

TFinestraDialogo* TFinestraDialogo::DaManiglia(const void* h, int& indice)
{
    std::lock_guard<std::mutex> g(mutexManiglie);
    if (!h || !maniglieVive.count(h)) return nullptr;
    const TManiglia* m = static_cast<const TManiglia*>(h);
    indice = m->indice;
    return m->finestra;
}

TStatoElemento& TFinestraDialogo::El(int indice)
{
    if (indice < 0 || indice >= static_cast<int>(stato.elementi.size()))
        throw std::out_of_range("controllo fuori dal modello di dialogo");
    return stato.elementi[static_cast<std::size_t>(indice)];
}

const TStatoElemento& TFinestraDialogo::El(int indice) const
{
    return const_cast<TFinestraDialogo*>(this)->El(indice);
}

void TFinestraDialogo::Cambiato() { BackendDialoghi().Cambiato(*this); }

void TFinestraDialogo::Svegliato() { BackendDialoghi().Svegliato(*this); }

void TFinestraDialogo::ImpostaPixel(int indice, std::int32_t larghezza, std::int32_t altezza)
{
    std::lock_guard<std::mutex> g(mutex);
    std::int32_t& l = indice < 0 ? stato.larghezzaPixel : El(indice).larghezzaPixel;
    std::int32_t& a = indice < 0 ? stato.altezzaPixel : El(indice).altezzaPixel;
    l = larghezza;
    a = altezza;
}

void TFinestraDialogo::Pixel(int indice, std::int32_t& larghezza, std::int32_t& altezza) const
{
    std::lock_guard<std::mutex> g(mutex);
    larghezza = indice < 0 ? stato.larghezzaPixel : El(indice).larghezzaPixel;
    altezza = indice < 0 ? stato.altezzaPixel : El(indice).altezzaPixel;
}

void TFinestraDialogo::ImpostaSfondo(std::uint32_t colore)
{
    std::lock_guard<std::mutex> g(mutex);
    stato.sfondo = colore;
}

void TFinestraDialogo::ImpostaVerifica(int indice, std::function<bool(const std::string&)> verifica)
{
    std::lock_guard<std::mutex> g(mutex);
    El(indice);  // checks the index
    verifiche[static_cast<std::size_t>(indice)] = std::move(verifica);
}

// The verifier is the edit's and never changes once the dialog runs, so it
// is called without the lock.
bool TFinestraDialogo::Ammesso(int indice, const std::string& testo) const
{
    std::function<bool(const std::string&)> verifica;
    {
        std::lock_guard<std::mutex> g(mutex);
        El(indice);
        verifica = verifiche[static_cast<std::size_t>(indice)];
    }
    return !verifica || verifica(testo);
}

std::string TFinestraDialogo::Testo(int indice) const
{
    std::lock_guard<std::mutex> g(mutex);
    return indice < 0 ? stato.titolo : El(indice).testo;
}

void TFinestraDialogo::ImpostaTesto(int indice, const std::string& testo)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        (indice < 0 ? stato.titolo : El(indice).testo) = testo;
    }
    Cambiato();
}

bool TFinestraDialogo::Abilitato(int indice) const
{
    std::lock_guard<std::mutex> g(mutex);
    return indice < 0 || El(indice).abilitato;
}

void TFinestraDialogo::Abilita(int indice, bool abilitato)
{
    if (indice < 0) return;  // the dialog itself is always enabled
    {
        std::lock_guard<std::mutex> g(mutex);
        El(indice).abilitato = abilitato;
    }
    Cambiato();
}

int TFinestraDialogo::Check(int indice) const
{
    std::lock_guard<std::mutex> g(mutex);
    return indice < 0 ? 0 : El(indice).check;
}

void TFinestraDialogo::ImpostaCheck(int indice, int valore)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        El(indice).check = valore;
    }
    Cambiato();
}

void TFinestraDialogo::ScegliRadio(int indice)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        El(indice);  // checks the index
        const TStatoDialogo::TGruppo gruppo = stato.GruppoRadio(indice);
        for (int i = gruppo.primo; i <= gruppo.ultimo; ++i)
            stato.elementi[static_cast<std::size_t>(i)].check = i == indice ? 1 : 0;
    }
    Cambiato();
}

int TFinestraDialogo::AggiungiVoce(int indice, const std::string& testo)
{
    int nuova;
    {
        std::lock_guard<std::mutex> g(mutex);
        TStatoElemento& e = El(indice);
        if (!IsLista(e.tipo)) return -1;
        e.voci.push_back({testo, 0});
        nuova = static_cast<int>(e.voci.size()) - 1;
    }
    Cambiato();
    return nuova;
}

int TFinestraDialogo::ImpostaDato(int indice, int voce, std::intptr_t dato)
{
    std::lock_guard<std::mutex> g(mutex);
    TStatoElemento& e = El(indice);
    if (voce < 0 || voce >= static_cast<int>(e.voci.size())) return -1;
    e.voci[static_cast<std::size_t>(voce)].dato = dato;
    return 0;
}

std::intptr_t TFinestraDialogo::Dato(int indice, int voce) const
{
    std::lock_guard<std::mutex> g(mutex);
    const TStatoElemento& e = El(indice);
    if (voce < 0 || voce >= static_cast<int>(e.voci.size())) return -1;
    return e.voci[static_cast<std::size_t>(voce)].dato;
}

int TFinestraDialogo::NumVoci(int indice) const
{
    std::lock_guard<std::mutex> g(mutex);
    return static_cast<int>(El(indice).voci.size());
}

int TFinestraDialogo::Selezione(int indice) const
{
    std::lock_guard<std::mutex> g(mutex);
    return El(indice).selezione;
}

// -1 clears the selection; an index beyond the list does too and answers -1,
// as the platform's lists do.
int TFinestraDialogo::ImpostaSelezione(int indice, int voce)
{
    int risultato;
    {
        std::lock_guard<std::mutex> g(mutex);
        TStatoElemento& e = El(indice);
        const bool valida = voce >= 0 && voce < static_cast<int>(e.voci.size());
        e.selezione = valida ? voce : -1;
        risultato = valida ? voce : -1;
    }
    Cambiato();
    return risultato;
}

namespace {

void PreparaTela(TStatoElemento& e, std::uint32_t sfondo)
{
    TTela& t = e.tela;
    if (!t.Vuota()) return;
    t.larghezza = e.larghezzaPixel;
    t.altezza = e.altezzaPixel;
    if (t.larghezza <= 0 || t.altezza <= 0) return;
    t.pixel.assign(static_cast<std::size_t>(t.larghezza) * static_cast<std::size_t>(t.altezza), sfondo);
    if (e.tipo != TTipoElemento::cornice || (e.stile & stileInciso)) return;
    for (std::int32_t x = 0; x < t.larghezza; ++x) {
        t.pixel[static_cast<std::size_t>(x)] = coloreBordo;
        t.pixel[static_cast<std::size_t>((t.altezza - 1) * t.larghezza + x)] = coloreBordo;
    }
    for (std::int32_t y = 0; y < t.altezza; ++y) {
        t.pixel[static_cast<std::size_t>(y * t.larghezza)] = coloreBordo;
        t.pixel[static_cast<std::size_t>(y * t.larghezza + t.larghezza - 1)] = coloreBordo;
    }
}

}  // namespace

void TFinestraDialogo::Disegna(int indice, const std::function<void(TTela&)>& azione)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        TStatoElemento& e = El(indice);
        PreparaTela(e, stato.sfondo);
        if (e.tela.Vuota()) return;  // a control of no size has nothing to draw on
        azione(e.tela);
    }
    Cambiato();
}

void TFinestraDialogo::Traccia(int indice, const TTratto& tratto, const std::function<void(TTela&)>& azione)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        TStatoElemento& e = El(indice);
        PreparaTela(e, stato.sfondo);
        if (e.tela.Vuota()) return;
        azione(e.tela);
        if (seguiTratti) tratti[static_cast<std::size_t>(indice)].push_back(tratto);
    }
    Cambiato();
}

void TFinestraDialogo::SeguiTratti(bool segui)
{
    std::lock_guard<std::mutex> g(mutex);
    seguiTratti = segui;
    if (!segui)
        for (auto& t : tratti) t.clear();
}

std::vector<TTratto> TFinestraDialogo::PrendiTratti(int indice)
{
    std::lock_guard<std::mutex> g(mutex);
    El(indice);
    return std::exchange(tratti[static_cast<std::size_t>(indice)], {});
}

TTela TFinestraDialogo::TelaMostrata(int indice)
{
    std::lock_guard<std::mutex> g(mutex);
    const TTela tela = El(indice).tela;
    tratti[static_cast<std::size_t>(indice)].clear();
    return tela;
}

TTela TFinestraDialogo::Tela(int indice) const
{
    std::lock_guard<std::mutex> g(mutex);
    return El(indice).tela;
}

TStatoDialogo TFinestraDialogo::Fotografia() const
{
    std::lock_guard<std::mutex> g(mutex);
    return stato;
}

void TFinestraDialogo::Apri()
{
    std::lock_guard<std::mutex> g(mutex);
    coda.clear();
    finito = false;
    svegliato = false;
    valoreFine = 0;
}

void TFinestraDialogo::Posta(const TInput& input)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        coda.push_back(input);
        cv.notify_all();
    }
    Svegliato();
}

void TFinestraDialogo::Termina(int valore)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        if (finito) return;
        finito = true;
        valoreFine = valore;
        cv.notify_all();
    }
    Svegliato();
}

bool TFinestraDialogo::Terminato() const
{
    std::lock_guard<std::mutex> g(mutex);
    return finito;
}

int TFinestraDialogo::ValoreFine() const
{
    std::lock_guard<std::mutex> g(mutex);
    return valoreFine;
}

void TFinestraDialogo::Sveglia()
{
    {
        std::lock_guard<std::mutex> g(mutex);
        svegliato = true;
        cv.notify_all();
    }
    Svegliato();
}

bool TFinestraDialogo::InputInCoda() const
{
    std::lock_guard<std::mutex> g(mutex);
    return !coda.empty();
}

bool TFinestraDialogo::Risvegliato() const
{
    std::lock_guard<std::mutex> g(mutex);
    return finito || svegliato || !coda.empty();
}

bool TFinestraDialogo::ProssimoInput(TInput& input, TBackendDialoghi& backend)
{
    std::unique_lock<std::mutex> lk(mutex);
    for (;;) {
        if (finito) return false;
        if (!coda.empty()) {
            input = coda.front();
            coda.pop_front();
            return true;
        }
        lk.unlock();
        const std::chrono::milliseconds attesa = backend.Inattivo(*this);
        lk.lock();
        auto pronto = [this] { return finito || svegliato || !coda.empty(); };
        if (attesa.count() > 0)
            cv.wait_for(lk, attesa, pronto);
        else
            cv.wait(lk, pronto);
        svegliato = false;
    }
}
