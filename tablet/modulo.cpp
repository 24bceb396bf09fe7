// The library's entry point. On load it initialises its GModule with its
// instance handle, the address of the module itself, which stands in for the
// handle that the original platform gives the entry point.
#include "modulo.h"

namespace {

char ancoraIstanza;  // its address is the library's instance handle
HINSTANCE istanzaLibreria = nullptr;

__attribute__((constructor)) void AvvioLibreria()
{
    istanzaLibreria = &ancoraIstanza;
    ModuloLibreria().init(istanzaLibreria);
}

}  // namespace

GModule& ModuloLibreria()
{
    static GModule modulo;
    return modulo;
}

HINSTANCE IstanzaLibreria() { return istanzaLibreria; }

std::string LoadResString(unsigned id)
{
    char buf[1024];
    LoadStringA(istanzaLibreria, id, buf, sizeof buf);
    return buf;
}
