#include "ora_utc.h"

#include <cstdio>

std::tm OraUtc(std::chrono::system_clock::time_point t, int& millisecondi)
{
    const std::time_t s = std::chrono::system_clock::to_time_t(t);
    millisecondi = static_cast<int>(
        std::chrono::duration_cast<std::chrono::milliseconds>(t.time_since_epoch()).count() % 1000);
    std::tm u{};
    gmtime_r(&s, &u);
    return u;
}

std::string TestoOra(std::chrono::system_clock::time_point t)
{
    int ms = 0;
    const std::tm u = OraUtc(t, ms);
    char b[64];
    std::snprintf(b, sizeof b, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", u.tm_year + 1900, u.tm_mon + 1, u.tm_mday,
                  u.tm_hour, u.tm_min, u.tm_sec, ms);
    return b;
}
