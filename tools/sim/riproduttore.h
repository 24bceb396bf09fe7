// Plays the pointer on a simulated tablet, on a thread of its own: one state
// a step, first the presses queued with Premi, then the path. A cyclic path
// starts again; at the end of another one the pointer rests where it stopped
// and the tablet goes on reporting that, as tablets do.
#ifndef VELMARIN_RIPRODUTTORE_H
#define VELMARIN_RIPRODUTTORE_H

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "sim/percorsi.h"
#include "sim/tavoletta_pty.h"

class TRiproduttore {
public:
    TRiproduttore(TTavolettaPty& tavoletta, int tipo, std::chrono::milliseconds passo);
    ~TRiproduttore();
    TRiproduttore(const TRiproduttore&) = delete;
    TRiproduttore& operator=(const TRiproduttore&) = delete;

    void Percorso(const TPercorso& percorso, bool ciclico);
    void Premi(std::int32_t x, std::int32_t y, int bottone);
    // The states are played in turn after what is queued, before the path.
    void Accoda(const TPercorso& stati);
    // The pointer glides to (x, y) in `passi` steps from where the queue
    // leaves it, and presses there.
    void VaiEPremi(std::int32_t x, std::int32_t y, int bottone, int passi);
    void Avvia();
    void Ferma();

private:
    TStatoPuntatore Prossimo();
    void Suona();

    TTavolettaPty& tavoletta;
    const int tipo;
    const std::chrono::milliseconds passo;
    std::thread filo;

    mutable std::mutex mutex;
    std::condition_variable cv;
    std::deque<TStatoPuntatore> pressioni;
    TPercorso percorso;
    std::size_t prossimo = 0;
    bool ciclico = false;
    TStatoPuntatore ultimo{0, 0, 0};
    bool fermo = true;
};

#endif
