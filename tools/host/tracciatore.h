// What the tablet's buttons draw while digitizing. A press of funzConferma
// makes a point, or adds a vertex to the open line; the four opening
// functions end the open feature and open a line or polyline at the press;
// funzAnnulla ends the open feature. A line opened with "Fine Ent." is one
// segment and ends at its second vertex; one drawn freely ("Dis. Lib.") takes
// a vertex each time the pointer has gone `passo` ground units from the last.
// Ended features and notices go to the two callbacks, on the caller's thread.
#ifndef VELMARIN_HOST_TRACCIATORE_H
#define VELMARIN_HOST_TRACCIATORE_H

#include <functional>
#include <string>

#include "elemento_gis.h"

class TTracciatore {
public:
    using TFinito = std::function<void(const TElementoGis&)>;
    using TAvviso = std::function<void(const std::string&)>;

    TTracciatore(double passo, TFinito finito, TAvviso avviso);

    void Pressione(int bottone, int funzione, std::int32_t x, std::int32_t y, TVertice terra, const std::string& ora);
    void Mossa(TVertice terra);
    // Ends the open feature, as funzAnnulla does.
    void Chiudi();
    bool Aperto() const { return aperto; }

private:
    void Apri(TGenere genere, bool libero, int bottone, int funzione, std::int32_t x, std::int32_t y,
              TVertice terra, const std::string& ora);

    double passo;
    TFinito finito;
    TAvviso avviso;
    bool aperto = false;
    bool libero = false;  // vertices follow the pointer
    TElementoGis corrente;
};

#endif
