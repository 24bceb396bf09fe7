#include "elemento_gis.h"

#include "digit.h"

const char* NomeGenere(TGenere g)
{
    switch (g) {
    case TGenere::punto: return "point";
    case TGenere::linea: return "line";
    case TGenere::polilinea: return "polyline";
    case TGenere::poligono: return "polygon";
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
