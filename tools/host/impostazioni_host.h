// The set-up file in the host's run: read at the start, so that the host
// begins from the tablet chosen last time, and written when config ends with
// OK. The command line wins: --model for another model starts from that
// model's defaults, --port and --limits replace the file's.
#ifndef VELMARIN_HOST_IMPOSTAZIONI_HOST_H
#define VELMARIN_HOST_IMPOSTAZIONI_HOST_H

#include <string>

#include "argomenti.h"
#include "digit.h"

// Reads the file; true when its record serves, and then the model and port
// of `o` follow it where the command line named none. `messaggio` says what
// happened, or is empty when there is no file yet.
bool CaricaImpostazioni(TOpzioniHost& o, TDataDigit& salvato, std::string& messaggio);
// The record to start from: the saved one, with the limits of `record` when
// it has none and those of --limits when given.
TDataDigit ApplicaImpostazioni(const TDataDigit& salvato, const TDataDigit& record, const TOpzioniHost& o);
// Writes the record; the message says where, or why not.
bool SalvaImpostazioni(const TOpzioniHost& o, const TDataDigit& dati, std::string& messaggio);

#endif
