// A feature digitized on the tablet, as the GIS file takes it: the library's
// feature with the time of the press that opened it and the calibration
// that gave its ground coordinates.
#ifndef VELMARIN_HOST_ELEMENTO_GIS_H
#define VELMARIN_HOST_ELEMENTO_GIS_H

#include <chrono>
#include <string>

#include "tablet/sessione_digitalizzazione.h"

struct TElementoGis : TElemento {
    std::chrono::system_clock::time_point ora{};
    std::string calibrazione;  // the id of its calibration's record
};

// "point", "line", "polyline", "polygon": the feature's kind as the files
// carry it.
const char* NomeGenere(TGenere g);
// The label of a function code as the button dialog shows it ("Conferma",
// "Inizia Linea - Fine Ent."); "?" for a code that names no function.
const char* NomeCodiceFunzione(int codice);

#endif
