// The digitizing session from scripted presses and moves: every button
// function, undo, closing into a polygon, free drawing at a distance, and
// the session's end.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "digit.h"
#include "tablet/sessione_digitalizzazione.h"

namespace {

// Every event as a word: S started, + vertex, - vertex taken back, and for
// an ended feature its kind and vertex count (p1, l2, P3, G5), x a
// dropped one, E the session's end.
struct TDiario : TAscoltoSessione {
    void Iniziato(const TElemento&) override { voci += "S "; }
    void VerticeAggiunto(const TElemento&) override { voci += "+ "; }
    void VerticeTolto(const TElemento& e) override { voci += "-" + std::to_string(e.vertici.size()) + " "; }
    void Finito(const TElemento& e) override
    {
        const char* generi = "?plPG";
        voci += generi[static_cast<int>(e.genere)] + std::to_string(e.vertici.size()) + " ";
        finiti.push_back(e);
    }
    void Scartato(const TElemento&) override { voci += "x "; }
    void SessioneFinita() override { voci += "E "; }
    std::string voci;
    std::vector<TElemento> finiti;
};

constexpr int mossa = -1, annullaVertice = -2, fine = -3;

struct TPasso {
    int funzione;  // or mossa, annullaVertice, fine
    double e, n;
};

TEST(SessioneDigitalizzazione, ScriptedPressesMakeTheirFeatures)
{
    const struct {
        const char* caso;
        std::vector<TPasso> passi;
        const char* diario;
    } casi[] = {
        {"confirm alone is a point; a button of no function draws nothing",
         {{funzConferma, 5, 5}, {funzNessuna, 3, 3}, {mossa, 1, 1}}, "S p1 "},
        {"a line by end of entity is one segment",
         {{funzLineaFineEnt, 0, 0}, {funzConferma, 1, 0}, {funzConferma, 2, 0}}, "S + l2 S p1 "},
        {"a polyline takes presses until cancel; another opening ends the open one",
         {{funzPolilineaFineEnt, 0, 0}, {funzConferma, 1, 0}, {funzConferma, 2, 1}, {funzAnnulla, 0, 0},
          {funzPolilineaFineEnt, 9, 9}, {funzConferma, 9, 8}, {funzLineaFineEnt, 7, 7}, {funzConferma, 7, 6}},
         "S + + P3 S + P2 S + l2 "},
        {"free drawing takes a vertex each unit the puck goes, and confirm one where pressed",
         {{funzPolilineaDisLib, 0, 0}, {mossa, 0.5, 0}, {mossa, 1.0, 0}, {mossa, 1.5, 0}, {mossa, 2.2, 0},
          {funzConferma, 2.3, 0}, {mossa, 2.5, 0}, {funzLineaDisLib, 10, 10}, {mossa, 10, 12}, {fine, 0, 0}},
         "S + + + P4 S + l2 E "},
        {"a free-drawn line takes confirms as vertices until cancel",
         {{funzLineaDisLib, 0, 0}, {funzConferma, 5, 0}, {funzConferma, 9, 0}, {funzAnnulla, 0, 0}}, "S + + l3 "},
        {"undo takes back vertices, the last with its feature",
         {{funzPolilineaFineEnt, 0, 0}, {funzConferma, 1, 0}, {annullaVertice, 0, 0}, {annullaVertice, 0, 0},
          {annullaVertice, 0, 0}, {funzConferma, 4, 4}},
         "S + -1 -0 S p1 "},
        {"a polyline back within the tolerance of its start closes into a polygon",
         {{funzPolilineaFineEnt, 0, 0}, {funzConferma, 10, 0}, {funzConferma, 10, 10}, {funzConferma, 0.3, 0.3},
          {funzAnnulla, 0, 0}},
         "S + + + G4 "},
        {"three vertices back at the start are no polygon",
         {{funzPolilineaFineEnt, 0, 0}, {funzConferma, 10, 0}, {funzConferma, 0.1, 0}, {funzAnnulla, 0, 0}},
         "S + + P3 "},
        {"a line of one vertex is dropped; cancel with nothing open ends the session, which hears no more",
         {{funzLineaDisLib, 0, 0}, {funzAnnulla, 0, 0}, {funzAnnulla, 0, 0}, {funzConferma, 1, 1}, {fine, 0, 0}},
         "S x E "},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        TDiario d;
        TSessioneDigitalizzazione s(d);
        for (const TPasso& p : c.passi) {
            if (p.funzione == mossa) s.Mossa({p.e, p.n});
            else if (p.funzione == annullaVertice) s.AnnullaVertice();
            else if (p.funzione == fine) s.Termina();
            else s.Pressione(3, p.funzione, static_cast<int>(p.e), static_cast<int>(p.n), {p.e, p.n});
        }
        EXPECT_EQ(d.voci, c.diario);
    }
}

TEST(SessioneDigitalizzazione, APolygonEndsOnItsFirstVertexAndFeaturesSayWhatMadeThem)
{
    TDiario d;
    TSessioneDigitalizzazione s(d);
    EXPECT_FALSE(s.Imposta(0, 1));
    EXPECT_FALSE(s.Imposta(1, -1));
    ASSERT_TRUE(s.Imposta(1, 5));
    s.Pressione(6, funzPolilineaFineEnt, 100, 200, {0, 0});
    // The last vertex exactly the tolerance away: 3, 4, 5.
    for (TVertice v : {TVertice{10, 0}, TVertice{10, 10}, TVertice{3, 4}}) s.Pressione(1, funzConferma, 0, 0, v);
    s.Termina();
    ASSERT_EQ(d.finiti.size(), 1u);
    const TElemento& g = d.finiti[0];
    EXPECT_EQ(g.genere, TGenere::poligono);
    EXPECT_EQ(g.bottone, 6);
    EXPECT_EQ(g.funzione, funzPolilineaFineEnt);
    EXPECT_EQ(g.x, 100);
    EXPECT_EQ(g.y, 200);
    EXPECT_EQ(g.vertici.back().est, 0);
    EXPECT_EQ(g.vertici.back().nord, 0);
}

}  // namespace
