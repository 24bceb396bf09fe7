// A feature digitized on the tablet: a point, a line or a polyline in ground
// coordinates, with what made it - the press's time, button and function, and
// the tablet counts of its first vertex.
#ifndef VELMARIN_HOST_ELEMENTO_GIS_H
#define VELMARIN_HOST_ELEMENTO_GIS_H

#include <cstdint>
#include <string>
#include <vector>

enum class TGenere { punto, linea, polilinea };

struct TVertice {
    double est, nord;
};

struct TElementoGis {
    TGenere genere = TGenere::punto;
    std::vector<TVertice> vertici;
    std::string ora;      // UTC, ISO 8601, of the press that made it
    int bottone = 0;
    int funzione = 0;     // the function code of that button
    std::int32_t x = 0, y = 0;
};

// "point", "line", "polyline": the feature's kind as the files carry it.
const char* NomeGenere(TGenere g);
// The name of a function code as digit.h declares it ("funzConferma"); "?"
// for a code that names no function.
const char* NomeCodiceFunzione(int codice);

#endif
