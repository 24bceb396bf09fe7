// Watching the tablet: every press is printed with its button's function and,
// once the tablet is calibrated, its East and North; moves are counted and
// printed at most four times a second, so that a streaming tablet stays
// readable; a line each second gives the counts and the rate of reports. A
// tablet that falls silent, or never sends, is told of after a few seconds.
#ifndef VELMARIN_HOST_OSSERVA_H
#define VELMARIN_HOST_OSSERVA_H

#include <atomic>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <string>

#include "digit.h"
#include "terminale.h"

class TOsservatore : public CDigitNtfy {
public:
    TOsservatore(CDigit& digit, std::FILE* out);
    void NotifyMove(std::int32_t x, std::int32_t y) override;
    void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override;

    int Mosse() const { return mosse; }
    int Pressioni() const { return pressioni; }
    // When the last report came; the epoch before the first.
    std::chrono::steady_clock::time_point UltimoReport() const
    {
        return std::chrono::steady_clock::time_point(std::chrono::steady_clock::duration(ultimoReport.load()));
    }

private:
    std::string Terra(std::int32_t x, std::int32_t y) const;
    void Sentito();

    CDigit& digit;
    std::FILE* out;
    const bool calibrato;
    std::atomic<int> mosse{0}, pressioni{0};
    std::atomic<std::chrono::steady_clock::rep> ultimoReport{0};
    std::mutex mutex;
    std::chrono::steady_clock::time_point ultimaMossa{};
};

// Connects, watches until `conteggio` presses (0: no limit), `secondi`
// (0: no limit), q or Escape on the terminal (when there is one) or an
// interrupt, and stops delivery. Returns false, having said why, when the
// tablet could not be opened or nothing was heard from it.
bool Osserva(CDigit& digit, int conteggio, double secondi, TTerminale* terminale, std::FILE* out);

#endif
