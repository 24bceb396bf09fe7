// The catalogue of the tablet models that the library knows, with the
// defaults that the selection dialog applies when the user picks a model.
// Its index is the model number `tipo`; row 0 stands for no tablet.
#ifndef VELMARIN_CATALOGO_H
#define VELMARIN_CATALOGO_H

#include <cstdint>

#include "digit.h"

constexpr int lungNome = 21;  // names and labels are padded with blanks to 21 characters

struct TTipoDigit {
    char nome[lungNome + 1];
    std::int16_t velocita;
    std::int16_t parita;
    std::int16_t bitDati;
    std::int16_t bitStop;
    std::int16_t reset;
    std::int16_t numReset;        // 1: only "No" can be chosen
    std::int16_t risoluzione;
    std::int16_t numRisoluzioni;  // 1..3
    char etichRisoluzione[3][lungNome + 1];
    std::int16_t numBottoni;
};

constexpr int numTipiDigit = 9;
extern const TTipoDigit catalogoDigit[numTipiDigit];

// True for a model number that names a row of the catalogue.
inline bool TipoInCatalogo(int tipo) { return tipo >= 0 && tipo < numTipiDigit; }

// The record of a new CDigit(): no model, COM2, four buttons (confirm, line,
// line, cancel), no limits.
TDataDigit DatiPredefiniti();

// Takes model `tipo` with its row's settings: line, reset, resolution and
// button count. The port, the button functions and the limits stay. A model
// outside the catalogue changes nothing.
void ImpostaDaCatalogo(TDataDigit& dati, int tipo);

#endif
