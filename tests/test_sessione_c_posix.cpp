// What only the C interface's session does (the Python module's tests drive
// the rest of it through the same calls): undo from inside a callback, an end
// refused there, and an end from the host that finishes the open feature.
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/ripeti.h"
#include "velmarin.h"

namespace {

constexpr int portaProva = 4;

struct TDiarioC {
    std::mutex mutex;
    std::vector<std::string> voci;
    bool annullaAlSecondo = false;  // the callback undoes the second vertex it hears
    velmarin_session* sessione = nullptr;
    std::string rifiuto;

    void Scrivi(const std::string& v)
    {
        std::lock_guard<std::mutex> g(mutex);
        voci.push_back(v);
    }
    std::size_t Quante()
    {
        std::lock_guard<std::mutex> g(mutex);
        return voci.size();
    }
    static std::string Elemento(const char* evento, const velmarin_feature* f)
    {
        std::string s = std::string(evento) + " " + std::to_string(f->kind);
        for (int k = 0; k < f->vertex_count; ++k)
            s += " " + std::to_string(static_cast<int>(f->vertices[2 * k])) + "," +
                 std::to_string(static_cast<int>(f->vertices[2 * k + 1]));
        return s;
    }
    static TDiarioC& Di(void* u) { return *static_cast<TDiarioC*>(u); }
    static void Iniziato(void* u, const velmarin_feature* f) { Di(u).Scrivi(Elemento("started", f)); }
    static void Aggiunto(void* u, const velmarin_feature* f)
    {
        Di(u).Scrivi(Elemento("added", f));
        if (Di(u).annullaAlSecondo && f->vertex_count == 2) velmarin_session_undo(Di(u).sessione);
    }
    static void Tolto(void* u, const velmarin_feature* f) { Di(u).Scrivi(Elemento("removed", f)); }
    static void Finito(void* u, const velmarin_feature* f)
    {
        Di(u).Scrivi(Elemento("finished", f));
        velmarin_session_end(Di(u).sessione);  // refused from in here
        Di(u).rifiuto = velmarin_last_error();  // this thread's
    }
    static void Fine(void* u) { Di(u).Scrivi("ended"); }
    static void Mossa(void* u, double, double) { ++Di(u).mosse; }
    std::atomic<int> mosse{0};
};

class SessioneC : public TProvaSuLinea {
protected:
    SessioneC() : TProvaSuLinea(portaProva) {}
    void SetUp() override { ASSERT_TRUE(sim.Valida()); }

    // A model 5 tablet, East = x / 10, North = y / 10; buttons 1 confirm,
    // 2 polyline by end of entity, 4 cancel.
    velmarin_tablet* Tavoletta()
    {
        TDataDigit d = Dati(5);
        d.limitiDefiniti = true, d.xMin = 0, d.yMin = 0, d.xMax = 40000, d.yMax = 40000;
        d.funzBott[0] = funzConferma, d.funzBott[1] = funzPolilineaFineEnt, d.funzBott[3] = funzAnnulla;
        velmarin_tablet* t = velmarin_open(&d);
        const std::int32_t x[] = {0, 10000, 0}, y[] = {0, 0, 10000};
        const double e[] = {0, 1000, 0}, n[] = {0, 0, 1000};
        EXPECT_EQ(velmarin_fit_points(t, 3, x, y, e, n), 1);
        EXPECT_EQ(velmarin_connect(t), 1);
        return t;
    }
    // A move to a new (x, y), then a press of `b` there, heard once the diary
    // has `quante` entries.

    bool Premi(TDiarioC& d, std::int32_t x, std::int32_t y, int b, std::size_t quante)
    {
        const int mosse = d.mosse;
        return RipetiFinche([&] { return d.mosse > mosse; }, [&] { sim.InviaStato(5, {x, y, 0}, 20); }) &&
               RipetiFinche([&] { return d.Quante() >= quante; }, [&] { sim.InviaStato(5, {x, y, b}, 20); });
    }

    TTavolettaPty sim{portaProva};
};

TEST_F(SessioneC, UndoFromACallbackAndAnEndRefusedThereOrFinishingTheOpenFeature)
{
    velmarin_tablet* t = Tavoletta();
    TDiarioC d;
    const velmarin_session_callbacks c{&TDiarioC::Iniziato, &TDiarioC::Aggiunto, &TDiarioC::Tolto,
                                       &TDiarioC::Finito, &TDiarioC::Mossa, &TDiarioC::Fine};
    d.sessione = velmarin_digitize(t, &c, &d);
    ASSERT_NE(d.sessione, nullptr);
    ASSERT_TRUE(Premi(d, 1000, 2000, 1, 2));  // a point: its end refused from inside
    ASSERT_TRUE(Premi(d, 0, 0, 2, 3));        // a polyline opens
    d.annullaAlSecondo = true;
    ASSERT_TRUE(Premi(d, 5000, 5000, 1, 5));  // added, then undone by the callback
    d.annullaAlSecondo = false;
    ASSERT_TRUE(Premi(d, 6000, 6000, 1, 6));
    velmarin_session_end(d.sessione);
    const std::vector<std::string> attese = {"started 1 100,200",   "finished 1 100,200",     "started 3 0,0",
                                             "added 3 0,0 500,500", "removed 3 0,0",          "added 3 0,0 600,600",
                                             "finished 3 0,0 600,600", "ended"};
    EXPECT_EQ(d.voci, attese);
    EXPECT_EQ(d.rifiuto, "velmarin_session_end: not from inside the session's callbacks");
    velmarin_close(t);
}

}  // namespace
