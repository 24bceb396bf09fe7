#include "elemento_gis.h"

#include "dialogs/dialogo_funzioni_bottoni.h"
#include "resources/stringhe.h"

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
    const char* t = TestoRisorsa(IdsEtichettaFunzione(codice));
    return t ? t : "?";
}
