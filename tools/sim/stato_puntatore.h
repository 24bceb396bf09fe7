// Where the simulated tablet's pointer stands and which button is down.
#ifndef VELMARIN_STATO_PUNTATORE_H
#define VELMARIN_STATO_PUNTATORE_H

#include <cstdint>

struct TStatoPuntatore {
    std::int32_t x, y;
    int bottone;  // 0 = none
};

#endif
