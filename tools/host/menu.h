// The interactive menu of velmarin-host: one key picks the tablet set-up,
// a calibration or a watch, in a loop, on one tablet object so that a
// calibration holds for the watches after it.
#ifndef VELMARIN_HOST_MENU_H
#define VELMARIN_HOST_MENU_H

#include <string>

#include "argomenti.h"
#include "collegamento.h"
#include "digit.h"
#include "terminale.h"

// Runs one command; false when it failed.
bool EseguiComando(TComando comando, CDigit& digit, TDataDigit& dati, const TOpzioniHost& o, TTerminale& terminale,
                   TCollegamento& collegamento);

void Menu(CDigit& digit, TDataDigit& dati, const TOpzioniHost& o, TTerminale& terminale, TCollegamento& collegamento);

#endif
