// Times as the host's files carry them: UTC, to the millisecond.
#ifndef VELMARIN_HOST_ORA_UTC_H
#define VELMARIN_HOST_ORA_UTC_H

#include <chrono>
#include <ctime>
#include <string>

// The time in UTC, and its milliseconds.
std::tm OraUtc(std::chrono::system_clock::time_point t, int& millisecondi);
// UTC, ISO 8601 to the millisecond: "2026-11-25T20:30:12.345Z". Calibration
// ids are made of it.
std::string TestoOra(std::chrono::system_clock::time_point t);

#endif
