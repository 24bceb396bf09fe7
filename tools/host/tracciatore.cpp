#include "tracciatore.h"

#include <cmath>
#include <cstdio>
#include <utility>

#include "digit.h"

const char* NomeGenere(TGenere g)
{
    switch (g) {
    case TGenere::punto: return "point";
    case TGenere::linea: return "line";
    case TGenere::polilinea: return "polyline";
    }
    return "?";
}

const char* NomeCodiceFunzione(int codice)
{
    switch (codice) {
    case funzNessuna: return "funzNessuna";
    case funzConferma: return "funzConferma";
    case funzLineaDisLib: return "funzLineaDisLib";
    case funzLineaFineEnt: return "funzLineaFineEnt";
    case funzPolilineaDisLib: return "funzPolilineaDisLib";
    case funzPolilineaFineEnt: return "funzPolilineaFineEnt";
    case funzAnnulla: return "funzAnnulla";
    default: return "?";
    }
}

TTracciatore::TTracciatore(double p, TFinito f, TAvviso a) : passo(p), finito(std::move(f)), avviso(std::move(a)) {}

void TTracciatore::Apri(TGenere genere, bool lib, int bottone, int funzione, std::int32_t x, std::int32_t y,
                        TVertice terra, const std::string& ora)
{
    Chiudi();
    corrente = TElementoGis{genere, {terra}, ora, bottone, funzione, x, y};
    libero = lib;
    aperto = genere != TGenere::punto;
    if (!aperto) {
        finito(corrente);
        return;
    }
    char dove[96];
    std::snprintf(dove, sizeof dove, " open at %.3f %.3f", terra.est, terra.nord);
    avviso(NomeGenere(genere) + std::string(dove));
}

void TTracciatore::Pressione(int bottone, int funzione, std::int32_t x, std::int32_t y, TVertice terra,
                             const std::string& ora)
{
    switch (funzione) {
    case funzConferma:
        if (!aperto) {
            Apri(TGenere::punto, false, bottone, funzione, x, y, terra, ora);
            return;
        }
        corrente.vertici.push_back(terra);
        if (corrente.genere == TGenere::linea && !libero) Chiudi();
        return;
    case funzLineaFineEnt: Apri(TGenere::linea, false, bottone, funzione, x, y, terra, ora); return;
    case funzPolilineaFineEnt: Apri(TGenere::polilinea, false, bottone, funzione, x, y, terra, ora); return;
    case funzLineaDisLib: Apri(TGenere::linea, true, bottone, funzione, x, y, terra, ora); return;
    case funzPolilineaDisLib: Apri(TGenere::polilinea, true, bottone, funzione, x, y, terra, ora); return;
    case funzAnnulla:
        if (aperto) Chiudi();
        else avviso("button " + std::to_string(bottone) + " (funzAnnulla): no line is open");
        return;
    default:
        avviso("button " + std::to_string(bottone) + " has no function");
        return;
    }
}

void TTracciatore::Mossa(TVertice terra)
{
    if (!aperto || !libero) return;
    const TVertice& ultimo = corrente.vertici.back();
    if (std::hypot(terra.est - ultimo.est, terra.nord - ultimo.nord) >= passo) corrente.vertici.push_back(terra);
}

void TTracciatore::Chiudi()
{
    if (!aperto) return;
    aperto = false;
    if (corrente.vertici.size() < 2) {
        avviso(std::string("a ") + NomeGenere(corrente.genere) + " of one vertex is dropped");
        return;
    }
    finito(corrente);
}
