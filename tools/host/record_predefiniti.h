// The records this host starts from, as a host keeps the TDataDigit the
// user chose: each model's settings from the library's catalogue, with the
// default buttons. configDigit lets the user change them; without it these
// are what the host connects with.
#ifndef VELMARIN_HOST_RECORD_PREDEFINITI_H
#define VELMARIN_HOST_RECORD_PREDEFINITI_H

#include <string>

#include "digit.h"

// The record of model `tipo` (1..8) on COM<porta>.
TDataDigit RecordPredefinito(int tipo, int porta);
// The model's name; "?" outside 1..8.
const char* NomeModello(int tipo);
// The label of a button function code, as the button dialog shows it; "?"
// for a code that names no function.
std::string NomeFunzione(int codice);

#endif
