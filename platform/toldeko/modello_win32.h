// A dialog template of the library made into the system's own: a
// DLGTEMPLATE in memory, for CreateDialogIndirectParamW. One source of the
// templates, resources/modelli_dialogo.cpp, serves every backend.
//
// Each item becomes the system's control of its kind, in template order,
// which is also the tab order: statics, frames (black or etched), edits,
// push buttons (the default one BS_DEFPUSHBUTTON), automatic radios, group
// boxes and drop-down lists. A radio that starts its group, and every
// control that is not a radio, carries WS_GROUP, so that each group of
// radios runs from its first radio up to the next control that is no
// radio of it; edits, buttons, lists and each group's first radio take
// the focus with Tab. The dialog is made hidden, and shows once it holds
// the toolkit's state.
#ifndef TOLDEKO_MODELLO_WIN32_H
#define TOLDEKO_MODELLO_WIN32_H

#include <windows.h>

#include <vector>

#include "resources/modelli_dialogo.h"

// The template, WORD-aligned as the system wants it.
std::vector<WORD> ModelloDiSistema(const TModelloDialogo& modello);

#endif
