// The command line of velmarin-host.
#ifndef VELMARIN_HOST_ARGOMENTI_H
#define VELMARIN_HOST_ARGOMENTI_H

#include <string>
#include <vector>

#include "argomenti_gis.h"

enum class TComando { menu, config, calibraPunti, calibraGriglia, osserva, demo, digitalizza, porte };

struct TOpzioniHost {
    std::string dispositivo;  // empty: the built-in simulated tablet
    int tipo = 5;
    bool tipoDato = false;
    int porta = 1;            // the COM number the device is mapped to
    int passo = 200;          // the built-in tablet: milliseconds a state, slow enough to follow
    bool portaData = false;
    int conteggio = 0;        // watch: stop after so many presses; 0 never
    double secondi = 0;       // watch: stop after so long; 0 never
    bool limiti = false;      // --limits given: the four below
    int xMin = 0, yMin = 0, xMax = 0, yMax = 0;
    bool aiuto = false;
    TOpzioniGisHost gis;
    std::vector<TComando> comandi;  // run in order on one tablet object
};

extern const char* const usoHost;

// Fills `o`; false with the reason in `errore` for a line that cannot run.
bool AnalizzaArgomenti(const std::vector<std::string>& argomenti, TOpzioniHost& o, std::string& errore);

#endif
