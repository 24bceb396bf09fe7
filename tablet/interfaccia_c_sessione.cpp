// The digitizing session through the C interface: a session listens on its
// tablet through velmarin_listen, turns counts into ground and buttons into
// functions through the tablet's own calls, and hands the features to the
// host's functions. The reader thread's presses and the host's undo, set and
// end meet under one lock; a callback may call velmarin_session_undo and
// velmarin_session_set, on the same thread, hence a recursive one.
#include <mutex>
#include <new>
#include <vector>

#include "link/ultimo_errore.h"
#include "tablet/sessione_digitalizzazione.h"
#include "velmarin.h"

struct velmarin_session final : TAscoltoSessione {
    velmarin_session(velmarin_tablet* t, const velmarin_session_callbacks& c, void* u)
        : tavoletta(t), richiami(c), utente(u), sessione(*this)
    {
    }

    void Iniziato(const TElemento& e) override { Passa(richiami.feature_started, e); }
    void VerticeAggiunto(const TElemento& e) override { Passa(richiami.vertex_added, e); }
    void VerticeTolto(const TElemento& e) override { Passa(richiami.vertex_removed, e); }
    void Finito(const TElemento& e) override { Passa(richiami.feature_finished, e); }
    void Mossa(TVertice v) override
    {
        if (richiami.puck_moved) richiami.puck_moved(utente, v.est, v.nord);
    }
    void SessioneFinita() override
    {
        if (richiami.session_ended) richiami.session_ended(utente);
    }

    template <class F>
    void Passa(F funzione, const TElemento& e)
    {
        if (!funzione) return;
        coppie.clear();
        for (const TVertice& v : e.vertici) coppie.push_back(v.est), coppie.push_back(v.nord);
        const velmarin_feature f{static_cast<int>(e.genere), e.funzione, e.bottone, e.x, e.y,
                                 static_cast<int>(e.vertici.size()), coppie.data()};
        dentro = true;
        funzione(utente, &f);
        dentro = false;
    }

    velmarin_tablet* tavoletta;
    velmarin_session_callbacks richiami;
    void* utente;
    std::recursive_mutex mutex;
    TSessioneDigitalizzazione sessione;
    std::vector<double> coppie;
    bool dentro = false;  // a callback of this session runs
};

namespace {

void VELMARIN_CALL Mossa(void* u, std::int32_t x, std::int32_t y)
{
    auto* s = static_cast<velmarin_session*>(u);
    double e = 0, n = 0;
    if (!velmarin_to_ground(s->tavoletta, x, y, &e, &n)) return;  // outside the map
    std::lock_guard<std::recursive_mutex> g(s->mutex);
    s->sessione.Mossa({e, n});
}

void VELMARIN_CALL Bottone(void* u, std::int32_t b, std::int32_t x, std::int32_t y)
{
    auto* s = static_cast<velmarin_session*>(u);
    double e = 0, n = 0;
    if (!velmarin_to_ground(s->tavoletta, x, y, &e, &n)) return;
    std::lock_guard<std::recursive_mutex> g(s->mutex);
    s->sessione.Pressione(b, velmarin_button_function(s->tavoletta, b), x, y, {e, n});
}

}  // namespace

velmarin_session* velmarin_digitize(velmarin_tablet* t, const velmarin_session_callbacks* c, void* user)
{
    if (!t || !velmarin_is_calibrated(t)) {
        RegistraErrore(t ? "velmarin_digitize: the tablet needs a model, its limits and a calibration in force"
                         : "velmarin_digitize: the tablet is null");
        return nullptr;
    }
    const velmarin_session_callbacks nessuno{};
    auto* s = new (std::nothrow) velmarin_session(t, c ? *c : nessuno, user);
    if (!s) {
        RegistraErrore("velmarin_digitize: out of memory");
        return nullptr;
    }
    if (!velmarin_listen(t, Mossa, Bottone, s)) {
        velmarin_stop(t);
        delete s;
        RegistraErrore("velmarin_digitize: the tablet's connection is not open");
        return nullptr;
    }
    return s;
}

int velmarin_session_set(velmarin_session* s, double passo, double tolleranza)
{
    if (!s) return 0;
    std::lock_guard<std::recursive_mutex> g(s->mutex);
    if (s->sessione.Imposta(passo, tolleranza)) return 1;
    RegistraErrore("velmarin_session_set: the free-drawing distance must be above 0, the tolerance 0 or more");
    return 0;
}

int velmarin_session_undo(velmarin_session* s)
{
    if (!s) return 0;
    std::lock_guard<std::recursive_mutex> g(s->mutex);
    return s->sessione.AnnullaVertice() ? 1 : 0;
}

void velmarin_session_end(velmarin_session* s)
{
    if (!s) return;
    {
        std::unique_lock<std::recursive_mutex> g(s->mutex, std::try_to_lock);
        if (g.owns_lock() && s->dentro) {  // this very thread, inside a callback
            RegistraErrore("velmarin_session_end: not from inside the session's callbacks");
            return;
        }
    }
    velmarin_stop(s->tavoletta);  // returns when no callback runs
    {
        std::lock_guard<std::recursive_mutex> g(s->mutex);
        s->sessione.Termina();
    }
    delete s;
}
