#include "record_predefiniti.h"

#include <cstring>

namespace {

struct TRiga {
    const char* nome;
    std::int16_t velocita, parita, bitDati, bitStop, reset, risoluzione, numBottoni;
};

const TRiga righe[] = {
    {"?", 0, ' ', 0, 0, 0, 0, 4},
    {"SummaGraph.MM BINARY", 9600, 'O', 8, 1, 2, 2, 4},
    {"SummaGraph.MM ASCII", 9600, 'O', 8, 1, 2, 2, 4},
    {"Calcomp 2000 ASCII", 9600, 'E', 7, 2, 2, 2, 4},
    {"OCE G 6830", 9600, 'E', 7, 1, 1, 1, 16},
    {"Summa MicroGrid 3", 9600, 'E', 7, 2, 2, 3, 16},
    {"Rolley MR2", 9600, 'E', 8, 1, 2, 2, 16},
    {"Calcomp 9500", 9600, 'E', 7, 1, 2, 1, 16},
    {"Numonics Binary", 9600, 'N', 8, 1, 2, 1, 4},
};

}  // namespace

TDataDigit RecordPredefinito(int tipo, int porta)
{
    CDigit vuoto;
    TDataDigit d;
    vuoto.GetDataDigit(d);  // the library's defaults: buttons, no limits
    const TRiga& r = righe[tipo >= 1 && tipo <= 8 ? tipo : 0];
    d.tipo = static_cast<std::int16_t>(tipo);
    d.porta = static_cast<std::int16_t>(porta);
    d.velocita = r.velocita;
    d.parita = r.parita;
    d.bitDati = r.bitDati;
    d.bitStop = r.bitStop;
    d.reset = r.reset;
    d.risoluzione = r.risoluzione;
    d.numBottoni = r.numBottoni;
    return d;
}

const char* NomeModello(int tipo) { return righe[tipo >= 1 && tipo <= 8 ? tipo : 0].nome; }

const char* NomeFunzione(int codice)
{
    switch (codice) {
    case funzNessuna: return "-";
    case funzConferma: return "Conferma";
    case funzAnnulla: return "Annulla - Fine funzione";
    case funzLineaDisLib: return "Inizia Linea - Dis. Lib.";
    case funzLineaFineEnt: return "Inizia Linea - Fine Ent.";
    case funzPolilineaDisLib: return "Inizia Polilinea - Dis. Lib.";
    case funzPolilineaFineEnt: return "Inizia Polilinea - Fine Ent.";
    default: return "?";
    }
}
