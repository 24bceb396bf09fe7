// The reader thread's CPU time so far (0 with none): a reader at rest or one that spins.
#ifndef VELMARIN_BENCH_TEMPO_LETTORE_H
#define VELMARIN_BENCH_TEMPO_LETTORE_H

#include <pthread.h>
#include <time.h>

#include <chrono>

#include "link/iodev_info.h"

inline std::chrono::nanoseconds TempoLettore()
{
    clockid_t orologio;
    if (!devInfo || pthread_getcpuclockid(devInfo->hThread.native_handle(), &orologio) != 0) return {};
    timespec t{};
    clock_gettime(orologio, &t);
    return std::chrono::seconds(t.tv_sec) + std::chrono::nanoseconds(t.tv_nsec);
}

#endif
