// Waits on a line: repeats a step until what the target has heard is enough.
#ifndef VELMARIN_TEST_SUONA_H
#define VELMARIN_TEST_SUONA_H

#include "ripeti.h"
#include "sim/tavoletta_pty.h"
#include "registratore.h"

// Sends a state until the target has heard `quante` notifications in all; false if a send fails.
inline bool SuonaFinoA(TTavolettaPty& sim, int tipo, const TStatoPuntatore& stato, std::size_t lunghezza,
                       const TRegistratore& reg, std::size_t quante)
{
    bool inviato = true;
    return RipetiFinche([&] { return !inviato || reg.Notifiche().size() >= quante; },
                        [&] { inviato = sim.InviaStato(tipo, stato, lunghezza); }) &&
           inviato;
}

#endif
