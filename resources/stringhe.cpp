// The string table built into the library, from tabella_stringhe.inc.
#include "stringhe.h"

namespace {

struct TStringa {
    unsigned id;
    const char* testo;
};

constexpr TStringa tabella[] = {
#define STRINGA(id, testo) {id, testo},
#include "resources/tabella_stringhe.inc"
#undef STRINGA
};

}  // namespace

const char* TestoRisorsa(unsigned id)
{
    for (const TStringa& s : tabella)
        if (s.id == id) return s.testo;
    return nullptr;
}
