// Stand-in for the tablet selection while the library's selection dialog is
// not yet part of the build: it says so and leaves the record as it is. The
// host connects with its own record of the model (--model). Replace this file
// with one that calls configDigit once the dialog is in the library.
#include "configura.h"
#include "platform/winui.h"

int Configura(CDigit&, TDataDigit&)
{
    MessageBoxA(nullptr, "La scelta della tavoletta non e' ancora disponibile.\nSi usa il modello indicato con --model.",
                "Scelta tavoletta", MB_OK | MB_ICONEXCLAMATION);
    return IDCANCEL;
}
