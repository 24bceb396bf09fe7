// One screen of the terminal front end, laid out for the terminal's size:
// the line that names the tablet, the dialog on top, the lines of help under
// it, a notice, and a message box drawn over the dialog. A dialog wider than
// the screen is squeezed into it; one taller than the room left is cut
// around the control with the focus, with a marker line on each cut side.
#ifndef VELMARIN_HOST_IMPAGINAZIONE_H
#define VELMARIN_HOST_IMPAGINAZIONE_H

#include <string>
#include <vector>

#include "platform/toldeko/stato_dialogo.h"

struct TContenutoSchermo {
    std::string intestazione;
    TStatoDialogo stato;
    int fuoco = -1;                    // index in stato.elementi, -1 none
    std::vector<std::string> aiuto;    // under the dialog, each wrapped to the width
    std::string avviso;                // the last line, in bold
    std::vector<std::string> riquadro; // a message box, drawn over the dialog
};

struct TSchermata {
    std::vector<std::string> righe;  // plain text, one a screen row
    int rigaAvviso = -1;             // the row of the notice, -1 none
    int rigaFuoco = -1, colonnaFuoco = 0, larghezzaFuoco = 0;  // reverse video
    int rigaCursore = -1, colonnaCursore = 0;  // the caret of an entry field
};

TSchermata Impagina(const TContenutoSchermo& contenuto, int colonne, int righe);

// `testo` in lines of at most `larghezza` cells, broken at blanks.
std::vector<std::string> APiuRighe(const std::string& testo, int larghezza);

#endif
