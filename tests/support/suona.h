// Plays pointer states from a simulated tablet until the target has heard
// them: one gather's worth of a state is sent, and sent again every 100 ms
// until the expected count of notifications is reached. A repeat of a state
// that was already heard adds nothing (same position, or a button still
// down), so the repeats only make up for reads that merged two sends.
#ifndef VELMARIN_TEST_SUONA_H
#define VELMARIN_TEST_SUONA_H

#include <chrono>
#include <thread>

#include "sim/tavoletta_pty.h"
#include "registratore.h"

// Waits until the target has heard `quante` notifications in all, at most 5 s.
inline bool AttendiNotifiche(const TRegistratore& reg, std::size_t quante)
{
    using namespace std::chrono;
    const auto limite = steady_clock::now() + seconds(5);
    while (reg.Notifiche().size() < quante && steady_clock::now() < limite)
        std::this_thread::sleep_for(milliseconds(2));
    return reg.Notifiche().size() >= quante;
}

inline bool SuonaFinoA(TTavolettaPty& sim, int tipo, const TStatoPuntatore& stato, std::size_t lunghezza,
                       const TRegistratore& reg, std::size_t quante)
{
    using namespace std::chrono;
    const auto limite = steady_clock::now() + seconds(5);
    while (steady_clock::now() < limite) {
        if (!sim.InviaStato(tipo, stato, lunghezza)) return false;
        const auto prossimo = steady_clock::now() + milliseconds(100);
        while (steady_clock::now() < prossimo) {
            if (reg.Notifiche().size() >= quante) return true;
            std::this_thread::sleep_for(milliseconds(2));
        }
    }
    return reg.Notifiche().size() >= quante;
}

#endif
