// The library's start: its module object, its instance handle, and its texts.
#ifndef VELMARIN_MODULO_H
#define VELMARIN_MODULO_H

#include <string>

#include "platform/toldeko/gmodule.h"

// The library's GModule, initialised when the library is loaded.
GModule& ModuloLibreria();

// A text of the library's string table.
std::string LoadResString(unsigned id);

#endif
