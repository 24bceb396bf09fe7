// What a dialog shows at one moment: its caption and the state of every
// control. A plain value, so that a backend can keep or draw it without
// holding the dialog.
#ifndef TOLDEKO_STATO_DIALOGO_H
#define TOLDEKO_STATO_DIALOGO_H

#include <cstdint>
#include <string>
#include <vector>

#include "resources/modelli_dialogo.h"

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
    std::string testo;
    bool abilitato = true;
    int check = 0;                  // radios: 1 checked
    std::vector<TVoceLista> voci;   // lists
    int selezione = -1;             // lists: -1 none
};

struct TStatoDialogo {
    unsigned modello = 0;  // 0: no dialog
    std::string titolo;
    short cx = 0, cy = 0;
    std::vector<TStatoElemento> elementi;

    // The control `id`, or null. Labels share the id idNessuno and are not found.
    const TStatoElemento* Elemento(int id) const;
    // Short readings for tests and front ends; empty or 0 for an unknown id.
    std::string Testo(int id) const;
    int Check(int id) const;
    bool Abilitato(int id) const;
    int Selezione(int id) const;
};

#endif
