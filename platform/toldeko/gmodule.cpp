#include "gmodule.h"

#include <atomic>

#include "resources/modelli_dialogo.h"

namespace {

std::atomic<GModule*> ultimoInizializzato{nullptr};

}  // namespace

void GModule::init(HINSTANCE instance)
{
    istanza = instance;
    ultimoInizializzato.store(this);
}

std::string GModule::loadString(unsigned id) const
{
    char buf[1024];
    LoadStringA(istanza, id, buf, sizeof buf);
    return buf;
}

const TModelloDialogo* GModule::findTemplate(unsigned id) const { return ModelloDialogo(id); }

GModule& GModule::principale()
{
    static GModule riserva;
    GModule* m = ultimoInizializzato.load();
    return m ? *m : riserva;
}
