// A calibration by the library's own procedure, with the library's report
// of it afterwards, kept: each calibration gets an id (the time it was
// made, UTC to the millisecond: "cal-2026-11-25T20:30:12.345Z", the prefix
// keeping GIS readers from taking it for a date) and its report is appended as one line of
// JSON to a log of calibrations, which is never rewritten. Features carry
// the id, so the calibration behind any of them can be found again.
#ifndef VELMARIN_HOST_CALIBRA_CON_RAPPORTO_H
#define VELMARIN_HOST_CALIBRA_CON_RAPPORTO_H

#include <string>

#include "digit.h"

struct TCalibrazioneFatta {
    bool riuscita = false;  // what the procedure returned
    std::string id;         // set when the tablet is calibrated after it
    std::string testo;      // the report for the screen
    std::string errore;     // the log could not take the record: why
};

// Runs CalibraPtSparsi or CalibraGriglia; when the tablet is calibrated
// after it, makes the report and appends it to `registro` when one is named.
TCalibrazioneFatta CalibraConRapporto(CDigit& digit, bool griglia, const std::string& registro);

#endif
