// An injected tick, one ms a read: waits cost reads, not time; the counter tells how long.

#ifndef VELMARIN_TEST_TICK_FINTO_H
#define VELMARIN_TEST_TICK_FINTO_H

#include <atomic>
#include <cstdint>

#include "platform/winui.h"

class TTickFinto {
public:
    explicit TTickFinto(std::uint32_t inizio = 0)
    {
        contatore() = inizio;
        ImpostaSorgenteTick(&Leggi);
    }
    ~TTickFinto() { ImpostaSorgenteTick(nullptr); }

    std::uint32_t Adesso() const { return contatore().load(); }  // without moving it

private:
    static std::atomic<std::uint32_t>& contatore()
    {
        static std::atomic<std::uint32_t> c{0};
        return c;
    }
    static std::uint32_t Leggi() { return contatore().fetch_add(1); }
};

#endif
