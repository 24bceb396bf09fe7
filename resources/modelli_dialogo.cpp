// The dialog templates 10040 to 10046, all in "MS Sans Serif" 8.
#include "modelli_dialogo.h"

namespace {

using T = TTipoElemento;
constexpr int N = idNessuno;
constexpr const char* font = "MS Sans Serif";
constexpr int dimFont = 8;

// Entry of a point for the sparse-point calibration.
constexpr TElementoModello puntiSparsi[] = {
    {N, T::statico, "Coord. Est (Y)", 8, 8, 60, 8, 0},
    {N, T::statico, "Coord. Nord (X)", 8, 24, 60, 8, 0},
    {2000, T::edit, "", 72, 6, 80, 12, 0},
    {2001, T::edit, "", 72, 22, 80, 12, 0},
    {1, T::predefinito, "&OK", 24, 44, 48, 14, 0},
    {2, T::pulsante, "&Annulla", 88, 44, 48, 14, 0},
};

// Parameters of a grid.
constexpr TElementoModello griglia[] = {
    {N, T::statico, "C. Est (Y)", 80, 8, 64, 8, 0},
    {N, T::statico, "C. Nord (X)", 152, 8, 64, 8, 0},
    {N, T::statico, "Num. quadrati", 8, 24, 68, 8, 0},
    {N, T::statico, "Val. iniziale", 8, 40, 68, 8, 0},
    {N, T::statico, "Val. intervallo", 8, 56, 68, 8, 0},
    {2040, T::edit, "", 80, 22, 64, 12, 0},
    {2041, T::edit, "", 152, 22, 64, 12, 0},
    {2042, T::edit, "", 80, 38, 64, 12, 0},
    {2043, T::edit, "", 152, 38, 64, 12, 0},
    {2044, T::edit, "", 80, 54, 64, 12, 0},
    {2045, T::edit, "", 152, 54, 64, 12, 0},
    {1, T::predefinito, "&OK", 56, 76, 48, 14, 0},
    {2, T::pulsante, "&Annulla", 120, 76, 48, 14, 0},
};

// Digitizing of one point; no OK button.
constexpr TElementoModello digitalizza[] = {
    {N, T::statico, "Digitalizza il Punto di   C.  Est (Y) :", 8, 8, 156, 8, 0},
    {N, T::statico, "C. Nord (X) :", 108, 24, 56, 8, stileADestra},
    {2080, T::statico, "1", 168, 8, 72, 8, 0},
    {2081, T::statico, "1", 168, 24, 72, 8, 0},
    {2, T::pulsante, "&Annulla", 100, 44, 48, 14, 0},
};

// Choice of the tablet.
constexpr TElementoModello sceltaTavoletta[] = {
    {N, T::cornice, "", 4, 4, 288, 116, stileInciso},
    {N, T::statico, "Tipo tavoletta", 12, 10, 56, 8, 0},
    {2120, T::combo, "", 72, 8, 112, 12, 0},
    {2121, T::gruppo, "Porta", 8, 24, 56, 48, 0},
    {2122, T::radio, "Com1", 16, 32, 40, 8, stileInizioGruppo},
    {2123, T::radio, "Com2", 16, 40, 40, 8, 0},
    {2124, T::radio, "Com3", 16, 48, 40, 8, 0},
    {2125, T::radio, "Com4", 16, 56, 40, 8, 0},
    {2126, T::gruppo, "Velocità", 72, 24, 56, 40, 0},
    {2127, T::radio, "4800", 80, 32, 40, 8, stileInizioGruppo},
    {2128, T::radio, "9600", 80, 40, 40, 8, 0},
    {2129, T::radio, "19200", 80, 48, 40, 8, 0},
    {2130, T::gruppo, "Parità", 136, 24, 56, 40, 0},
    {2131, T::radio, "No", 144, 32, 40, 8, stileInizioGruppo},
    {2132, T::radio, "Even", 144, 40, 40, 8, 0},
    {2133, T::radio, "Odd", 144, 48, 40, 8, 0},
    {2134, T::gruppo, "Bit", 200, 24, 40, 32, 0},
    {2135, T::radio, "7", 208, 32, 24, 8, stileInizioGruppo},
    {2136, T::radio, "8", 208, 40, 24, 8, 0},
    {2137, T::gruppo, "Stop", 248, 24, 40, 32, 0},
    {2138, T::radio, "1", 256, 32, 24, 8, stileInizioGruppo},
    {2139, T::radio, "2", 256, 40, 24, 8, 0},
    {2140, T::gruppo, "Reset", 8, 80, 56, 32, 0},
    {2141, T::radio, "No", 16, 88, 40, 8, stileInizioGruppo},
    {2142, T::radio, "Si", 16, 96, 40, 8, 0},
    {2143, T::gruppo, "Risoluzione", 72, 80, 56, 36, 0},
    {2144, T::radio, "200", 80, 88, 40, 8, stileInizioGruppo},
    {2145, T::radio, "500", 80, 96, 40, 8, 0},
    {2146, T::radio, "1000", 80, 104, 40, 8, 0},
    {2147, T::gruppo, "Bottoni", 136, 80, 56, 32, 0},
    {2148, T::radio, "4", 144, 88, 40, 8, stileInizioGruppo},
    {2149, T::radio, "16", 144, 96, 40, 8, 0},
    {1, T::predefinito, "&OK", 8, 128, 48, 12, 0},
    {2, T::pulsante, "&Annulla", 64, 128, 48, 12, 0},
    {2150, T::pulsante, "&Bottoni", 120, 128, 48, 12, 0},
    {2151, T::pulsante, "&Limiti", 176, 128, 48, 12, 0},
    {2152, T::pulsante, "&Prova", 232, 128, 48, 12, 0},
};

// Function of each cursor button: buttons 1 to 8 on the left, 9 to 16 on
// the right, one row of 12 units each; each number stands level with the
// text of its list.
constexpr TElementoModello funzioniBottoni[] = {
    {N, T::statico, "Bott.", 8, 8, 24, 8, 0},
    {N, T::statico, "Funzione", 32, 8, 120, 8, 0},
    {N, T::statico, "Bott.", 168, 8, 24, 8, 0},
    {N, T::statico, "Funzione", 192, 8, 120, 8, 0},
    {2180, T::statico, "1", 8, 22, 16, 8, 0},
    {2181, T::statico, "2", 8, 34, 16, 8, 0},
    {2182, T::statico, "3", 8, 46, 16, 8, 0},
    {2183, T::statico, "4", 8, 58, 16, 8, 0},
    {2184, T::statico, "5", 8, 70, 16, 8, 0},
    {2185, T::statico, "6", 8, 82, 16, 8, 0},
    {2186, T::statico, "7", 8, 94, 16, 8, 0},
    {2187, T::statico, "8", 8, 106, 16, 8, 0},
    {2188, T::statico, "9", 168, 22, 16, 8, 0},
    {2189, T::statico, "10", 168, 34, 16, 8, 0},
    {2190, T::statico, "11", 168, 46, 16, 8, 0},
    {2191, T::statico, "12", 168, 58, 16, 8, 0},
    {2192, T::statico, "13", 168, 70, 16, 8, 0},
    {2193, T::statico, "14", 168, 82, 16, 8, 0},
    {2194, T::statico, "15", 168, 94, 16, 8, 0},
    {2195, T::statico, "16", 168, 106, 16, 8, 0},
    {2196, T::combo, "", 32, 20, 120, 12, 0},
    {2197, T::combo, "", 32, 32, 120, 12, 0},
    {2198, T::combo, "", 32, 44, 120, 12, 0},
    {2199, T::combo, "", 32, 56, 120, 12, 0},
    {2200, T::combo, "", 32, 68, 120, 12, 0},
    {2201, T::combo, "", 32, 80, 120, 12, 0},
    {2202, T::combo, "", 32, 92, 120, 12, 0},
    {2203, T::combo, "", 32, 104, 120, 12, 0},
    {2204, T::combo, "", 192, 20, 120, 12, 0},
    {2205, T::combo, "", 192, 32, 120, 12, 0},
    {2206, T::combo, "", 192, 44, 120, 12, 0},
    {2207, T::combo, "", 192, 56, 120, 12, 0},
    {2208, T::combo, "", 192, 68, 120, 12, 0},
    {2209, T::combo, "", 192, 80, 120, 12, 0},
    {2210, T::combo, "", 192, 92, 120, 12, 0},
    {2211, T::combo, "", 192, 104, 120, 12, 0},
    {1, T::predefinito, "&OK", 100, 124, 48, 14, 0},
    {2, T::pulsante, "&Annulla", 176, 124, 48, 14, 0},
};

// Working limits: two corners; no OK button.
constexpr TElementoModello limiti[] = {
    {N, T::statico, "Digitalizza", 8, 8, 144, 8, stileCentrato},
    {2240, T::statico, "", 8, 20, 144, 8, stileCentrato},
    {2, T::pulsante, "&Annulla", 56, 36, 48, 14, 0},
};

// Live test: a frame standing for the working area, the raw counts, the button.
constexpr TElementoModello prova[] = {
    {2280, T::cornice, "", 8, 8, 160, 120, 0},
    {N, T::statico, "Coord. Est (Y):", 176, 8, 64, 8, 0},
    {2281, T::statico, "1", 176, 20, 64, 8, stileADestra},
    {N, T::statico, "Coord. Nord (X):", 176, 36, 64, 8, 0},
    {2282, T::statico, "1", 176, 48, 64, 8, stileADestra},
    {N, T::statico, "Bottone", 176, 64, 64, 8, 0},
    {2283, T::statico, "0", 176, 76, 64, 8, stileADestra},
    {2, T::pulsante, "&Fine", 184, 112, 48, 14, 0},
};

template <std::size_t n>
constexpr TModelloDialogo Modello(unsigned id, const char* titolo, short cx, short cy,
                                  const TElementoModello (&elementi)[n])
{
    return {id, titolo, font, dimFont, cx, cy, elementi, n};
}

constexpr TModelloDialogo modelli[] = {
    Modello(10040, "Calibrazione per punti sparsi", 160, 64, puntiSparsi),
    Modello(10041, "Calibrazione per griglia", 224, 96, griglia),
    Modello(10042, "", 244, 64, digitalizza),
    Modello(10043, "Scelta tavoletta", 296, 148, sceltaTavoletta),
    Modello(10044, "Definizione funzioni bottone", 328, 144, funzioniBottoni),
    Modello(10045, "Limiti tavoletta", 160, 56, limiti),
    Modello(10046, "Prova tavoletta", 248, 136, prova),
};

}  // namespace

const TModelloDialogo* ModelloDialogo(unsigned id)
{
    for (const TModelloDialogo& m : modelli)
        if (m.id == id) return &m;
    return nullptr;
}
