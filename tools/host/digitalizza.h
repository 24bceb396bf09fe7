// Digitizing a map into a GIS file: the library's digitizing session turns
// the tablet's presses into points, lines, polylines and polygons in ground
// coordinates of the calibration in force; each feature is written to the
// file as soon as it ends (see uscita_gis.h) and shown in the terminal with
// its number. The run ends with q or Escape on the terminal, Ctrl-C or
// SIGTERM, or funzAnnulla with no feature open, and ends the open feature.
#ifndef VELMARIN_HOST_DIGITALIZZA_H
#define VELMARIN_HOST_DIGITALIZZA_H

#include <cstdio>
#include <condition_variable>
#include <mutex>
#include <vector>
#include <string>

#include "digit.h"
#include "elemento_gis.h"
#include "tablet/sessione_digitalizzazione.h"
#include "terminale.h"
#include "uscita_gis.h"

// The host's notification target while digitizing. The features end on the
// reader thread and are written on the host's: a reader kept waiting by a
// file drops what the tablet sends meanwhile.
class TDigitalizzatore : public CDigitNtfy, TAscoltoSessione {
public:
    TDigitalizzatore(CDigit& digit, TUscitaGis& uscita, double passo, std::FILE* out);
    void NotifyMove(std::int32_t x, std::int32_t y) override;
    void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override;
    // Ends the open feature and the session.
    void Chiudi();
    // The session ended from the tablet (funzAnnulla with nothing open).
    bool Finita() const;
    // Writes the features ended since the last call, waiting at most `ms`
    // for one when there is none.
    void ScriviFiniti(int ms);
    int Scritti() const;

private:
    // The session's events, on the reader thread with the lock held.
    void Iniziato(const TElemento& e) override;
    void Finito(const TElemento& e) override;
    void Scartato(const TElemento& e) override;
    void SessioneFinita() override;
    void Avviso(const std::string& testo);

    CDigit& digit;
    TUscitaGis& uscita;
    std::FILE* out;
    mutable std::mutex mutex;
    std::condition_variable finiti;
    std::vector<TElementoGis> coda;
    TSessioneDigitalizzazione sessione;
    std::string oraInizio;  // of the press that opened the feature
    bool finita = false;
    int scritti = 0;
};

// Checks the calibration, opens the file and the tablet and digitizes until
// the user stops; false with the reason in `errore` when it cannot start.
bool Digitalizza(CDigit& digit, const TOpzioniGis& o, double passo, TTerminale* terminale, std::FILE* out,
                 std::string& errore);

#endif
