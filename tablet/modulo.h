// The library's start: its module object, its instance handle, and its texts.
#ifndef VELMARIN_MODULO_H
#define VELMARIN_MODULO_H

#include <string>

#include "platform/toldeko/gmodule.h"

// The library's GModule, initialised when the library is loaded.
GModule& ModuloLibreria();

// The library's instance handle, stored at load.
HINSTANCE IstanzaLibreria();

// A text of the library's string table: LoadStringA with the instance handle
// and a buffer of 1024 characters. Every id in use stands in the table.
std::string LoadResString(unsigned id);

#endif
