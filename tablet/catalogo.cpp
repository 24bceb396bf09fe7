#include "catalogo.h"

#define VUOTO "                     "

const TTipoDigit catalogoDigit[numTipiDigit] = {
    {" -                   ", 0, ' ', 0, 0, 0, 0, 0, 0, {VUOTO, VUOTO, VUOTO}, 0},
    {" SummaGraph.MM BINARY", 9600, 'O', 8, 1, 2, 2, 2, 3,
     {"  200 lpi            ", "  500 lpi            ", " 1000 lpi            "}, 4},
    {" SummaGraph.MM ASCII ", 9600, 'O', 8, 1, 2, 2, 2, 3,
     {"  200 lpi            ", "  500 lpi            ", " 1000 lpi            "}, 4},
    {" Calcomp 2000 ASCII  ", 9600, 'E', 7, 2, 2, 2, 2, 3,
     {"  200 lpi            ", "  500 lpi            ", " 1000 lpi            "}, 4},
    {" OCE G 6830          ", 9600, 'E', 7, 1, 1, 1, 1, 1,
     {" STANDARD            ", VUOTO, VUOTO}, 16},
    {" Summa MicroGrid 3   ", 9600, 'E', 7, 2, 2, 2, 3, 3,
     {"  200 lpi            ", " 1000 lpi            ", " 2000 lpi            "}, 16},
    {" Rolley MR2          ", 9600, 'E', 8, 1, 2, 2, 2, 2,
     {" REDUCED: 0.1  mm    ", " FULL   : 0.01 mm    ", VUOTO}, 16},
    {" Calcomp 9500        ", 9600, 'E', 7, 1, 2, 2, 1, 1,
     {" 1000 lpi            ", VUOTO, VUOTO}, 16},
    {" Numonics Binary     ", 9600, 'N', 8, 1, 2, 2, 1, 1,
     {" 1000 lpi            ", VUOTO, VUOTO}, 4},
};

void ImpostaDaCatalogo(TDataDigit& dati, int tipo)
{
    if (!TipoInCatalogo(tipo)) return;
    const TTipoDigit& riga = catalogoDigit[tipo];
    dati.tipo = static_cast<std::int16_t>(tipo);
    dati.velocita = riga.velocita;
    dati.parita = riga.parita;
    dati.bitDati = riga.bitDati;
    dati.bitStop = riga.bitStop;
    dati.reset = riga.reset;
    dati.risoluzione = riga.risoluzione;
    dati.numBottoni = riga.numBottoni;
}
