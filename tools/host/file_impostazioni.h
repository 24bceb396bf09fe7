// The tablet's set-up as the host keeps it between runs: the TDataDigit
// chosen in config, in a small text file of "key value" lines, written whole
// to a new file that then replaces the old by a rename. A file is taken only
// when every line is right; a missing, cut, hand-spoiled or newer file gives
// a message and leaves the caller's record as it was.
#ifndef VELMARIN_HOST_FILE_IMPOSTAZIONI_H
#define VELMARIN_HOST_FILE_IMPOSTAZIONI_H

#include <string>

#include "digit.h"

enum class TEsitoImpostazioni { letto, assente, errato };

// --setup when given, else $XDG_CONFIG_HOME/velmarin/setup, else
// $HOME/.config/velmarin/setup; empty when none of them is known.
std::string PercorsoImpostazioni(const std::string& scelto);

// On `letto` fills `dati` whole; otherwise `messaggio` says why not and
// `dati` is untouched.
TEsitoImpostazioni LeggiImpostazioni(const std::string& percorso, TDataDigit& dati, std::string& messaggio);
// Makes the folder when needed; false with the reason in `errore`.
bool ScriviImpostazioni(const std::string& percorso, const TDataDigit& dati, std::string& errore);

#endif
