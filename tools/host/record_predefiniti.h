// The records this host keeps for the tablets it knows, as a host keeps the
// TDataDigit the user chose: each model's usual line settings, reset and
// resolution, with the default buttons. configDigit lets the user change
// them; without it these are what the host connects with.
#ifndef VELMARIN_HOST_RECORD_PREDEFINITI_H
#define VELMARIN_HOST_RECORD_PREDEFINITI_H

#include "digit.h"

// The record of model `tipo` (1..8) on COM<porta>.
TDataDigit RecordPredefinito(int tipo, int porta);
// The model's name; "?" outside 1..8.
const char* NomeModello(int tipo);
// The label of a button function code, as the button dialog shows it.
const char* NomeFunzione(int codice);

#endif
