// Message boxes and beeps of the library in the terminal: a box is drawn
// under the dialog on screen and answered with a key (Enter or S for the
// first button, N or Escape for "No"); a beep rings the terminal's bell and
// says so under the dialog, so that a refused entry is seen as well as heard.
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

private:
    TTerminale& terminale;
    TBackendTerminale& backend;
};

#endif
