// Draws a dialog as lines of text, for a terminal front end and for failure
// messages. Dialog units map to a grid of characters, four units to a column
// and eight to a row, inside a border whose top line carries the caption.
//
//   static       its text, left, centred or right-aligned in its box
//   edit         [text    ]
//   button       < OK >       default button  <<OK>>   ('&' markers dropped)
//   radio        (*) Com1     unchecked  ( ) Com1
//   list         [selected entry   v]
//   group box    a frame with its caption in the top line; frames likewise,
//                with '#' on each cell of a frame that holds a drawing
//
// A disabled edit, button, radio or list shows braces in place of its
// brackets or parentheses: {text}, {OK}, {*} Com1.
#ifndef TOLDEKO_DISEGNO_TESTO_H
#define TOLDEKO_DISEGNO_TESTO_H

#include <string>
#include <vector>

#include "platform/toldeko/stato_dialogo.h"

// How dialog units fall on columns: four units a column, or, for a screen
// narrower than that, the dialog squeezed to `colonne` columns inside its
// border. Rows stay eight units each.
struct TMisura {
    int colonne = 0;  // columns inside the border; 0: four units a column
    int cx = 0;       // the dialog's width in units
    int Colonna(int x) const { return colonne > 0 && cx > 0 ? x * colonne / cx : x / 4; }
};
// The measure that draws `stato` in at most `larghezza` columns, border
// included; 0 or a wide enough screen: four units a column.
TMisura MisuraPer(const TStatoDialogo& stato, int larghezza);

std::vector<std::string> DisegnaDialogo(const TStatoDialogo& stato, const TMisura& misura = {});

// Where a one-line control stands in the drawing: row and first column
// (from 0 in the dialog's lines) and its width in cells.
struct TPosizione {
    int riga, colonna, larghezza;
};
TPosizione PosizioneControllo(const TStatoElemento& e, const TMisura& misura = {});

// A text cut into the cells it fills, one UTF-8 character a cell.
std::vector<std::string> CelleTesto(const std::string& testo);
// The same lines joined, each ended by a line feed.
std::string DisegnaDialogoTesto(const TStatoDialogo& stato);

#endif
