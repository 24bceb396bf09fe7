// The interactive menu of velmarin-host: one key picks the tablet set-up,
// a calibration, digitizing or a watch, in a loop, on one tablet object so that a
// calibration holds for the watches after it.
#ifndef VELMARIN_HOST_MENU_H
#define VELMARIN_HOST_MENU_H

#include <string>

#include "argomenti.h"
#include "collegamento.h"
#include "digit.h"
#include "terminale.h"

// Runs one command; false when its work was not done (a dialog cancelled, a
// file not written). `calibrazione` is the id of the calibration in force,
// which a calibration sets and digitizing writes with each feature.
bool EseguiComando(TComando comando, CDigit& digit, TDataDigit& dati, std::string& calibrazione, const TOpzioniHost& o,
                   TTerminale& terminale, TCollegamento& collegamento);
void Menu(CDigit& digit, TDataDigit& dati, std::string& calibrazione, const TOpzioniHost& o, TTerminale& terminale,
          TCollegamento& collegamento);

#endif
