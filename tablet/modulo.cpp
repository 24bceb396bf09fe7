// The library's module object, its instance handle, and its texts. The
// entry point of each platform (ingresso_posix.cpp, ingresso_win32.cpp)
// starts them.
#include "modulo.h"

#include "tablet/avvio.h"

namespace {

HINSTANCE istanzaLibreria = nullptr;

}  // namespace

void AvviaLibreria(void* istanza)
{
    istanzaLibreria = istanza;
    ModuloLibreria().init(istanzaLibreria);
}

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
