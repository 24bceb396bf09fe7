// GModule: a loaded module of the toolkit, through which its dialogs reach the
// module's string table and templates.
#ifndef TOLDEKO_GMODULE_H
#define TOLDEKO_GMODULE_H

#include <string>

#include "platform/winui.h"

struct TModelloDialogo;

class GModule {
public:
    GModule() = default;
    // Once at load. The module last initialised serves the dialogs that are
    // given no module and whose parent has none.
    void init(HINSTANCE instance);
    HINSTANCE instance() const { return istanza; }
    // The text `id` of the module's string table; empty when there is none.
    std::string loadString(unsigned id) const;
    // The dialog template `id`; null when there is none.
    const TModelloDialogo* findTemplate(unsigned id) const;

    static GModule& principale();

private:
    HINSTANCE istanza = nullptr;
};

#endif
