// The host's own words under each dialog: the keys that work on the control
// with the focus, and what the dialog waits for - which tablet button takes
// a point, how a calibration ends, how large a grid may be.
#ifndef VELMARIN_HOST_GUIDA_H
#define VELMARIN_HOST_GUIDA_H

#include <string>

#include "collegamento.h"
#include "digit.h"
#include "platform/toldeko/stato_dialogo.h"

// The index of the enabled default button in s.elementi, -1 when none.
int IndicePredefinito(const TStatoDialogo& s);

// Every key that does something to the control at `fuoco` (an index in
// s.elementi, -1 none), and what Enter and Escape press.
std::string TastiDelControllo(const TStatoDialogo& s, int fuoco);

// "tablet button 1 (Conferma)": the first button of `dati` with function
// `funzione`; empty when none has it.
std::string BottoneConFunzione(const TDataDigit& dati, int funzione);

// What a beep of `tipo` refused in the dialog `modello`, in words.
std::string Rifiuto(unsigned modello, unsigned tipo);

class TGuida {
public:
    TGuida(const CDigit& digit, const TCollegamento& collegamento);
    // What the dialog `modello` waits for, as the tablet is set up now.
    std::string Suggerimento(unsigned modello) const;
    // The question to ask before Esc or Annulla closes the dialog `modello`
    // and with it a calibration whose points would be lost; empty when
    // nothing would be.
    std::string DomandaAnnulla(unsigned modello) const;

private:
    std::string PerDigitalizzare() const;
    int PuntiPresi(unsigned modello) const;

    const CDigit& digit;
    const TCollegamento& collegamento;
};

#endif
