// A notification target that records what it hears, for the tests.
#ifndef VELMARIN_TEST_REGISTRATORE_H
#define VELMARIN_TEST_REGISTRATORE_H

#include <cstdint>
#include <mutex>
#include <ostream>
#include <vector>

#include "digit.h"

struct TNotifica {
    int bottone;  // 0 for a move
    std::int32_t x, y;
    bool operator==(const TNotifica& o) const { return bottone == o.bottone && x == o.x && y == o.y; }
};

inline std::ostream& operator<<(std::ostream& os, const TNotifica& n)
{
    if (n.bottone == 0) return os << "Move(" << n.x << "," << n.y << ")";
    return os << "Button(" << n.bottone << "," << n.x << "," << n.y << ")";
}

inline TNotifica Mossa(std::int32_t x, std::int32_t y) { return {0, x, y}; }
inline TNotifica Pressione(int b, std::int32_t x, std::int32_t y) { return {b, x, y}; }

// What a report of (x, y, bottone) announces when the one before it differs.
template <class S>
TNotifica Udito(const S& s)
{     return s.bottone ? Pressione(s.bottone, s.x, s.y) : Mossa(s.x, s.y);
}

// Whether `udito` is `inviato` with some of it left out, in order.
inline bool Sottosequenza(const std::vector<TNotifica>& udito, const std::vector<TNotifica>& inviato)
{
    std::size_t j = 0;
    for (const TNotifica& n : udito) {
        while (j < inviato.size() && !(inviato[j] == n)) ++j;
        if (j++ == inviato.size()) return false;
    }
    return true;
}

// Heard on the reader thread, looked at on the test's.
class TRegistratore : public CDigitNtfy {
public:
    void NotifyMove(std::int32_t x, std::int32_t y) override { Aggiungi({0, x, y}); }
    void NotifyButton(std::int32_t b, std::int32_t x, std::int32_t y) override { Aggiungi({b, x, y}); }
    std::vector<TNotifica> Notifiche() const
    {
        std::lock_guard<std::mutex> g(mutex);
        return notifiche;
    }
    void Svuota()
    {
        std::lock_guard<std::mutex> g(mutex);
        notifiche.clear();
    }

private:
    void Aggiungi(TNotifica n)
    {
        std::lock_guard<std::mutex> g(mutex);
        notifiche.push_back(n);
    }
    mutable std::mutex mutex;
    std::vector<TNotifica> notifiche;
};

#endif
