// Digitizing a map into a GIS file: the tablet's buttons draw points, lines
// and polylines (see tracciatore.h) in ground coordinates of the calibration
// in force, each feature is written to the file as soon as it ends (see
// uscita_gis.h) and shown in the terminal with its number. The run ends with
// q or Escape on the terminal, Ctrl-C or SIGTERM, and ends the open feature
// as funzAnnulla does.
#ifndef VELMARIN_HOST_DIGITALIZZA_H
#define VELMARIN_HOST_DIGITALIZZA_H

#include <cstdio>
#include <condition_variable>
#include <mutex>
#include <vector>
#include <string>

#include "digit.h"
#include "elemento_gis.h"
#include "terminale.h"
#include "tracciatore.h"
#include "uscita_gis.h"

// The host's notification target while digitizing. The features end on the
// reader thread and are written on the host's: a reader kept waiting by a
// file drops what the tablet sends meanwhile.
class TDigitalizzatore : public CDigitNtfy {
public:
    TDigitalizzatore(CDigit& digit, TUscitaGis& uscita, double passo, std::FILE* out);
    void NotifyMove(std::int32_t x, std::int32_t y) override;
    void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override;
    // Ends the open feature.
    void Chiudi();
    // Writes the features ended since the last call, waiting at most `ms`
    // for one when there is none.
    void ScriviFiniti(int ms);
    int Scritti() const;

private:
    void Finito(const TElementoGis& e);
    void Avviso(const std::string& testo);

    CDigit& digit;
    TUscitaGis& uscita;
    std::FILE* out;
    mutable std::mutex mutex;
    std::condition_variable finiti;
    std::vector<TElementoGis> coda;
    TTracciatore tracciatore;
    int scritti = 0;
};

// Checks the calibration, opens the file and the tablet and digitizes until
// the user stops; false with the reason in `errore` when it cannot start.
bool Digitalizza(CDigit& digit, const TOpzioniGis& o, double passo, TTerminale* terminale, std::FILE* out,
                 std::string& errore);

#endif
