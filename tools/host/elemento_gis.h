// A feature digitized on the tablet, as the GIS file takes it: the library's
// feature with the time of the press that opened it.
#ifndef VELMARIN_HOST_ELEMENTO_GIS_H
#define VELMARIN_HOST_ELEMENTO_GIS_H

#include <string>

#include "tablet/sessione_digitalizzazione.h"

struct TElementoGis : TElemento {
    std::string ora;  // UTC, ISO 8601
};

// "point", "line", "polyline", "polygon": the feature's kind as the files
// carry it (a polygon goes to the lines' layer as its closed ring).
const char* NomeGenere(TGenere g);
// The name of a function code as digit.h declares it ("funzConferma"); "?"
// for a code that names no function.
const char* NomeCodiceFunzione(int codice);

#endif
