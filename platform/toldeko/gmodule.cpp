#include "gmodule.h"

#include "resources/stringhe.h"

std::string GModule::loadString(unsigned id) const
{
    const char* testo = TestoRisorsa(id);
    return testo ? testo : "";
}
