// Message boxes, beeps and the wait cursor of the library in the terminal: a
// box is drawn over the dialog on screen (on the main screen when none is
// open) and answered with a key (Enter or Y for the first button, N or
// Escape for "No"); a beep rings the terminal's bell and says under the
// dialog what was refused; the wait cursor shows as a busy mark.
#ifndef VELMARIN_HOST_INTERFACCIA_TERMINALE_H
#define VELMARIN_HOST_INTERFACCIA_TERMINALE_H

#include "backend_terminale.h"
#include "platform/winui.h"
#include "terminale.h"

class TInterfacciaTerminale : public TInterfacciaUtente {
public:
    TInterfacciaTerminale(TTerminale& terminale, TBackendTerminale& backend);
    int messageBox(HWND owner, const char* text, const char* caption, unsigned flags) override;
    void beep(unsigned type) override;
    void cursore(HCURSOR cursore) override;

private:
    TTerminale& terminale;
    TBackendTerminale& backend;
};

#endif
