// Digitizing a map into a GIS file: the library's digitizing session turns
// the tablet's presses into points, lines, polylines and polygons in ground
// coordinates of the calibration in force; each feature is written to the
// file as soon as it ends (see uscita_gis.h) and shown in the terminal with
// its number. The run ends with q or Escape on the terminal, Ctrl-C or
// SIGTERM, or funzAnnulla with no feature open, and ends the open feature.
#ifndef VELMARIN_HOST_DIGITALIZZA_H
#define VELMARIN_HOST_DIGITALIZZA_H

#include <chrono>
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
    TDigitalizzatore(CDigit& digit, TUscitaGis& uscita, double passo, const std::string& calibrazione,
                     std::FILE* out);
    void NotifyMove(std::int32_t x, std::int32_t y) override;
    void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override;
    // Ends the open feature and the session.
    void Chiudi();
    // The session ended from the tablet (funzAnnulla with nothing open).
    bool Finita() const;
    // Writes the features ended since the last call, waiting at most `ms`
    // for one when there is none. False, with the file, the reason and what
    // is not written in `errore`, when a write fails: the session is to stop.
    bool ScriviFiniti(int ms, std::string& errore);
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
    const std::string calibrazione;
    mutable std::mutex mutex;
    std::condition_variable finiti;
    std::vector<TElementoGis> coda;
    TSessioneDigitalizzazione sessione;
    std::chrono::system_clock::time_point oraInizio;  // of the press that opened the feature
    bool finita = false;
    int scritti = 0;
};

// Checks the calibration, opens the files and the tablet and digitizes until
// the user stops, each feature marked with the id of the calibration in
// force; false with the reason in `errore` when it cannot start, or when a
// write fails and stops it.
bool Digitalizza(CDigit& digit, const TOpzioniGis& o, double passo, const std::string& calibrazione,
                 TTerminale* terminale, std::FILE* out, std::string& errore);

#endif
