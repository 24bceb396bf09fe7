// A digitizing session: the presses of the tablet's buttons, by their
// functions, turned into features in ground coordinates.
// - funzConferma makes a point, or adds a vertex to the open line;
// - funzLineaFineEnt and funzPolilineaFineEnt end the open feature and open
//   a line or a polyline at the press, one vertex per press after it; a line
//   is one segment and ends at its second vertex;
// - funzLineaDisLib and funzPolilineaDisLib open one drawn freely: a vertex
//   each time the puck has gone the free-drawing distance from the last
//   (and one at each funzConferma press);
// - funzAnnulla ends the open feature; with none open it ends the session;
// - undo takes back the open feature's last vertex, and with it the feature
//   when that was its first;
// - a polyline that ends with its last vertex within the closing tolerance
//   of its first, and three vertices besides, ends as a polygon whose last
//   vertex is the first;
// - a line or polyline that ends with one vertex is dropped.
// The session knows nothing of the tablet: its owner turns counts into
// ground and buttons into functions, and serialises the calls.
#ifndef VELMARIN_SESSIONE_DIGITALIZZAZIONE_H
#define VELMARIN_SESSIONE_DIGITALIZZAZIONE_H

#include <cstdint>
#include <vector>

enum class TGenere { punto = 1, linea = 2, polilinea = 3, poligono = 4 };

struct TVertice {
    double est, nord;
};

struct TElemento {
    TGenere genere = TGenere::punto;
    int funzione = 0;  // of the button that opened it
    int bottone = 0;
    std::int32_t x = 0, y = 0;  // counts of the press that opened it
    std::vector<TVertice> vertici;
};

// What a session tells its owner, on the caller's thread, as it happens.
class TAscoltoSessione {
public:
    virtual void Iniziato(const TElemento&) {}
    virtual void VerticeAggiunto(const TElemento&) {}
    virtual void VerticeTolto(const TElemento&) {}  // undone; none left: the feature is gone
    virtual void Finito(const TElemento&) {}
    virtual void Scartato(const TElemento&) {}      // ended with one vertex
    virtual void Mossa(TVertice) {}
    virtual void SessioneFinita() {}

protected:
    ~TAscoltoSessione() = default;
};

class TSessioneDigitalizzazione {
public:
    // Ground units: 1 between free-drawing vertices, 0.5 to close a polygon
    // (0 never closes one).
    static constexpr double passoPredefinito = 1.0, tolleranzaPredefinita = 0.5;

    explicit TSessioneDigitalizzazione(TAscoltoSessione& ascolto) : ascolto(ascolto) {}
    // False, and nothing changed, for a distance not above 0 or a tolerance
    // below 0 (or either not finite).
    bool Imposta(double passoLibero, double tolleranzaChiusura);

    void Pressione(int bottone, int funzione, std::int32_t x, std::int32_t y, TVertice terra);
    void Mossa(TVertice terra);
    // False when no feature is open.
    bool AnnullaVertice();
    // Ends the open feature and the session; a session ended hears nothing.
    void Termina();
    bool Terminata() const { return terminata; }

private:
    void Apri(TGenere genere, bool libero, int bottone, int funzione, std::int32_t x, std::int32_t y, TVertice terra);
    void Aggiungi(TVertice v);
    void Chiudi();

    TAscoltoSessione& ascolto;
    double passo = passoPredefinito, tolleranza = tolleranzaPredefinita;
    bool aperto = false, libero = false, terminata = false;
    TElemento corrente;
};

#endif
