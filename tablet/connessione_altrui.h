// Whether the connection running now belongs to another object.
//
// The library serves one tablet at a time. An object whose Init was refused
// because another object's connection runs (or that never connected while
// one runs) has no connection of its own: its command sequences put nothing
// on the line and leave the link record's format and length alone (their
// waits still run, as after any failed Init), and it neither takes nor drops
// the notification target. Objects that share a handle through assignment
// share the connection.
#ifndef VELMARIN_CONNESSIONE_ALTRUI_H
#define VELMARIN_CONNESSIONE_ALTRUI_H

#include <cstdint>

#include "link/iodev.h"

inline bool ConnessioneAltrui(std::intptr_t hPorta)
{
    const std::intptr_t aperto = IODevHandleAperto();
    return aperto != 0 && aperto != hPorta;
}

#endif
