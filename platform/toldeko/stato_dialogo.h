// What a dialog shows at one moment: its caption and the state of every
// control. A plain value, so that a backend can keep or draw it without
// holding the dialog.
#ifndef TOLDEKO_STATO_DIALOGO_H
#define TOLDEKO_STATO_DIALOGO_H

#include <cstdint>
#include <string>
#include <vector>

#include "resources/modelli_dialogo.h"

// Pixels per dialog unit of "MS Sans Serif" 8: six pixels to an average
// character of four units, thirteen to a line of eight.
constexpr std::int32_t PixelX(short u) { return u * 6 / 4; }
constexpr std::int32_t PixelY(short u) { return u * 13 / 8; }

// The face of a dialog, on which a drawing starts, unless the window that
// shows it has another, and the ink of a black frame's border.
constexpr std::uint32_t coloreSfondo = 0xC0C0C0;
constexpr std::uint32_t coloreBordo = 0x000000;

// What a control shows of the drawing done on it: a grid of colours, one
// 0x00BBGGRR value a pixel, row by row from the top left. Empty until the
// first drawing on the control.
struct TTela {
    std::int32_t larghezza = 0, altezza = 0;
    std::vector<std::uint32_t> pixel;

    bool Vuota() const { return pixel.empty(); }
    bool Dentro(std::int32_t x, std::int32_t y) const { return x >= 0 && y >= 0 && x < larghezza && y < altezza; }
    // The colour at (x, y); 0 outside.
    std::uint32_t Pixel(std::int32_t x, std::int32_t y) const
    {
        return Dentro(x, y) ? pixel[static_cast<std::size_t>(y) * static_cast<std::size_t>(larghezza) +
                                    static_cast<std::size_t>(x)]
                            : 0;
    }
};

// A straight line drawn on a control, as LineTo drew it on the canvas: from
// (x0, y0) up to (x1, y1) left out, with raster operation `modo` and the
// pen's colour. A view that shows the control in a window of the system
// draws it there again.
struct TTratto {
    std::int32_t x0, y0, x1, y1;
    int modo;
    std::uint32_t colore;
};

// An entry of a list: its text and the value the dialog attached to it.
struct TVoceLista {
    std::string testo;
    std::intptr_t dato = 0;
};

struct TStatoElemento {
    int id = idNessuno;
    TTipoElemento tipo = TTipoElemento::statico;
    unsigned stile = 0;
    short x = 0, y = 0, cx = 0, cy = 0;  // dialog units
    std::int32_t larghezzaPixel = 0, altezzaPixel = 0;  // as shown
    std::string testo;
    bool abilitato = true;
    int check = 0;                  // radios: 1 checked
    std::vector<TVoceLista> voci;   // lists
    int selezione = -1;             // lists: -1 none
    TTela tela;                     // what was drawn on the control
};

struct TStatoDialogo {
    unsigned modello = 0;  // 0: no dialog
    std::string titolo;
    short cx = 0, cy = 0;
    std::int32_t larghezzaPixel = 0, altezzaPixel = 0;  // the client area as shown
    std::uint32_t sfondo = coloreSfondo;                // the face of the dialog
    std::vector<TStatoElemento> elementi;

    // The radio group of the control at index `indice` in `elementi`: the
    // indices of its first and last radio. A group runs from the radio that
    // starts it over the radios that follow it in the template, up to the
    // next start or the next other control.
    struct TGruppo {
        int primo, ultimo;
    };
    TGruppo GruppoRadio(int indice) const;
    // The control `id`, or null. Labels share the id idNessuno and are not found.
    const TStatoElemento* Elemento(int id) const;
    // Short readings for tests and front ends; empty or 0 for an unknown id.
    std::string Testo(int id) const;
    int Check(int id) const;
    bool Abilitato(int id) const;
    int Selezione(int id) const;
};

#endif
