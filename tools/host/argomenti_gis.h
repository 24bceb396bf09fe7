// The options of velmarin-host for digitizing, its calibration report and
// its set-up file.
#ifndef VELMARIN_HOST_ARGOMENTI_GIS_H
#define VELMARIN_HOST_ARGOMENTI_GIS_H

#include <cstddef>
#include <string>
#include <vector>

#include "uscita_gis.h"

struct TOpzioniGisHost {
    TOpzioniGis gis;            // --out, --format, --crs, --layer
    double passo = 1;           // --stream-step: ground units between free-drawn vertices
    std::string rapporto;       // --report: the calibration report's JSON; empty: next to --out
    std::string impostazioni;   // --setup: the set-up file; empty: the user's own
};

extern const char* const usoGis;

// Takes a[i] when it is one of these options, with its value (i then points
// at the value). 1: taken; 0: not one of these; -1: bad, the reason in `errore`.
int AnalizzaOpzioneGis(const std::vector<std::string>& a, std::size_t& i, TOpzioniGisHost& o, std::string& errore);

// The log of calibrations: --report, else beside --out (map.gpkg:
// map.calibrations.jsonl), else none (empty).
std::string PercorsoRapporto(const TOpzioniGisHost& o);

// Checks, before any work, the files that digitizing and a calibration will
// write: false with the file and the reason in `errore`.
bool VerificaUscite(const TOpzioniGisHost& o, bool digitalizza, bool calibra, std::string& errore);

#endif
