#include "tablet/sessione_digitalizzazione.h"

#include <cmath>

#include "digit.h"

namespace {

double Distanza(TVertice a, TVertice b) { return std::hypot(a.est - b.est, a.nord - b.nord); }

}  // namespace

bool TSessioneDigitalizzazione::Imposta(double passoLibero, double tolleranzaChiusura)
{
    if (!(passoLibero > 0) || !std::isfinite(passoLibero) || !(tolleranzaChiusura >= 0) ||
        !std::isfinite(tolleranzaChiusura))
        return false;
    passo = passoLibero;
    tolleranza = tolleranzaChiusura;
    return true;
}

void TSessioneDigitalizzazione::Apri(TGenere genere, bool lib, int bottone, int funzione, std::int32_t x,
                                     std::int32_t y, TVertice terra)
{
    Chiudi();
    corrente = TElemento{genere, funzione, bottone, x, y, {terra}};
    libero = lib;
    ascolto.Iniziato(corrente);
    if (genere == TGenere::punto) {
        ascolto.Finito(corrente);
        return;
    }
    aperto = true;
}

void TSessioneDigitalizzazione::Aggiungi(TVertice v)
{
    corrente.vertici.push_back(v);
    ascolto.VerticeAggiunto(corrente);
}

void TSessioneDigitalizzazione::Pressione(int bottone, int funzione, std::int32_t x, std::int32_t y, TVertice terra)
{
    if (terminata) return;
    switch (funzione) {
    case funzConferma:
        if (!aperto) return Apri(TGenere::punto, false, bottone, funzione, x, y, terra);
        Aggiungi(terra);
        if (corrente.genere == TGenere::linea && !libero) Chiudi();
        return;
    case funzLineaFineEnt: return Apri(TGenere::linea, false, bottone, funzione, x, y, terra);
    case funzPolilineaFineEnt: return Apri(TGenere::polilinea, false, bottone, funzione, x, y, terra);
    case funzLineaDisLib: return Apri(TGenere::linea, true, bottone, funzione, x, y, terra);
    case funzPolilineaDisLib: return Apri(TGenere::polilinea, true, bottone, funzione, x, y, terra);
    case funzAnnulla:
        if (aperto) Chiudi();
        else Termina();
        return;
    default: return;  // a button with no function draws nothing
    }
}

void TSessioneDigitalizzazione::Mossa(TVertice terra)
{
    if (terminata) return;
    ascolto.Mossa(terra);
    if (aperto && libero && Distanza(terra, corrente.vertici.back()) >= passo) Aggiungi(terra);
}

bool TSessioneDigitalizzazione::AnnullaVertice()
{
    if (!aperto) return false;
    corrente.vertici.pop_back();
    aperto = !corrente.vertici.empty();
    ascolto.VerticeTolto(corrente);
    return true;
}

void TSessioneDigitalizzazione::Chiudi()
{
    if (!aperto) return;
    aperto = false;
    std::vector<TVertice>& v = corrente.vertici;
    if (v.size() < 2) return ascolto.Scartato(corrente);
    if (corrente.genere == TGenere::polilinea && tolleranza > 0 && v.size() >= 4 &&
        Distanza(v.front(), v.back()) <= tolleranza) {
        corrente.genere = TGenere::poligono;
        v.back() = v.front();
    }
    ascolto.Finito(corrente);
}

void TSessioneDigitalizzazione::Termina()
{
    if (terminata) return;
    Chiudi();
    terminata = true;
    ascolto.SessioneFinita();
}
