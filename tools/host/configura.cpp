// The host's tablet selection through the library's dialog.
#include "configura.h"

int Configura(CDigit& digit, TDataDigit& dati)
{
    const int risultato = configDigit(nullptr, &digit, dati);
    if (risultato == 1) digit.SetDataDigit(dati);
    return risultato;
}
