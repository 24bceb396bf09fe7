// A calibration by the library's own procedure, with the library's report
// of it afterwards.
#ifndef VELMARIN_HOST_CALIBRA_CON_RAPPORTO_H
#define VELMARIN_HOST_CALIBRA_CON_RAPPORTO_H

#include <string>

#include "digit.h"

// Runs CalibraPtSparsi or CalibraGriglia and returns its result. When the
// tablet is calibrated after it, `rapporto` holds the report for the
// terminal and, if `json` names a file, the report is written there too.
bool CalibraConRapporto(CDigit& digit, bool griglia, const std::string& json, std::string& rapporto);

#endif
