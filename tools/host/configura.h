// The tablet selection of the host: runs the library's selection dialog on
// the host's record. On OK the choice goes to the tablet object; on cancel
// the tablet object gets the host's record back, since the dialog leaves it
// holding the working copy it last tried. Either way a tablet that the
// dialog left programmed otherwise is programmed again with the record.
// Returns what the dialog ended with.
#ifndef VELMARIN_HOST_CONFIGURA_H
#define VELMARIN_HOST_CONFIGURA_H

#include <cstdio>
#include <string>

#include "digit.h"

int Configura(CDigit& digit, TDataDigit& dati);

// The set-up the host works with: model, port, line, buttons, limits, and a
// warning when no button confirms.
std::string DescriviImpostazione(const TDataDigit& dati);
// Says how the selection ended, and the set-up chosen.
void RiferisciConfigurazione(int risultato, const TDataDigit& dati, std::FILE* out);

#endif
