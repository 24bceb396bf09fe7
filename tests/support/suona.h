// Waits on a line: repeats a step until what the target has heard is enough.
#ifndef VELMARIN_TEST_SUONA_H
#define VELMARIN_TEST_SUONA_H

#include <chrono>
#include <thread>

#include "sim/tavoletta_pty.h"
#include "registratore.h"

// Runs `passo` every 100 ms until `fatto` holds, at most 5 s, and says
// whether it came to hold. A step that repeats what was already heard adds
// nothing, so the repeats only make up for sends that a read merged or lost.
template <class F, class P>
bool RipetiFinche(F fatto, P passo)
{
    using namespace std::chrono;
    const auto fine = steady_clock::now() + seconds(5);
    while (!fatto() && steady_clock::now() < fine) {
        passo();
        const auto prossimo = steady_clock::now() + milliseconds(100);
        while (!fatto() && steady_clock::now() < prossimo) std::this_thread::sleep_for(milliseconds(2));
    }
    return fatto();
}

// Waits until `fatto` holds, at most 5 s.
template <class F>
bool AttendiFinche(F fatto)
{
    return RipetiFinche(fatto, [] {});
}

// Waits until the target has heard `quante` notifications in all, at most 5 s.
inline bool AttendiNotifiche(const TRegistratore& reg, std::size_t quante)
{
    return AttendiFinche([&] { return reg.Notifiche().size() >= quante; });
}

// Sends one gather's worth of a pointer state until the target has heard
// `quante` notifications in all; false also when a send fails.
inline bool SuonaFinoA(TTavolettaPty& sim, int tipo, const TStatoPuntatore& stato, std::size_t lunghezza,
                       const TRegistratore& reg, std::size_t quante)
{
    bool inviato = true;
    return RipetiFinche([&] { return !inviato || reg.Notifiche().size() >= quante; },
                        [&] { inviato = sim.InviaStato(tipo, stato, lunghezza); }) &&
           inviato;
}

#endif
