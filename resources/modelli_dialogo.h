// The library's dialog templates: for each dialog its caption, font, size and
// every control with its id, kind, caption, style and place. Places and sizes
// are in dialog units, four to the width and eight to the height of an
// average character of the dialog's font.
#ifndef VELMARIN_MODELLI_DIALOGO_H
#define VELMARIN_MODELLI_DIALOGO_H

#include <cstddef>

// Id of the controls that nobody addresses: labels, frames.
constexpr int idNessuno = -1;

enum class TTipoElemento {
    statico,     // a text
    cornice,     // a static frame (black or etched); no text
    edit,        // a one-line entry
    pulsante,    // a push button
    predefinito, // the default push button, raised by Enter
    radio,       // an automatic radio button
    gruppo,      // a group box: a frame with a caption around radios
    combo,       // a drop-down list
};

// Style bits.
constexpr unsigned stileCentrato = 1u << 0;  // text centred in its box
constexpr unsigned stileADestra = 1u << 1;   // text right-aligned in its box
constexpr unsigned stileInizioGruppo = 1u << 2;  // first radio of its group
constexpr unsigned stileInciso = 1u << 3;    // etched frame rather than black

struct TElementoModello {
    int id;
    TTipoElemento tipo;
    const char* testo;
    short x, y, cx, cy;
    unsigned stile;
};

struct TModelloDialogo {
    unsigned id;
    const char* titolo;
    const char* font;
    int dimensioneFont;
    short cx, cy;
    const TElementoModello* elementi;
    std::size_t numElementi;
};

// The template `id`, or null when there is none.
const TModelloDialogo* ModelloDialogo(unsigned id);

#endif
