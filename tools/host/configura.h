// The tablet selection of the host: runs the library's selection dialog on
// the host's record and, on OK, hands the choice to the tablet object.
// Returns what the dialog ended with.
#ifndef VELMARIN_HOST_CONFIGURA_H
#define VELMARIN_HOST_CONFIGURA_H

#include "digit.h"

int Configura(CDigit& digit, TDataDigit& dati);

#endif
