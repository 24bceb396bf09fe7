// GModule: a loaded module of the toolkit, through which its dialogs reach the
// module's string table and templates.
#ifndef TOLDEKO_GMODULE_H
#define TOLDEKO_GMODULE_H

#include <string>

#include "platform/winui.h"

class GModule {
public:
    GModule() = default;
    void init(HINSTANCE instance) { istanza = instance; }
    HINSTANCE instance() const { return istanza; }
    // The text `id` of the module's string table; empty when there is none.
    std::string loadString(unsigned id) const;

private:
    HINSTANCE istanza = nullptr;
};

#endif
