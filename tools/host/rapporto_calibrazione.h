// The library's calibration report as the terminal host shows it: a page of
// text for the screen, and a line of JSON for the log of calibrations kept
// beside the GIS output.
#ifndef VELMARIN_HOST_RAPPORTO_CALIBRAZIONE_H
#define VELMARIN_HOST_RAPPORTO_CALIBRAZIONE_H

#include <string>

#include "calibration/rapporto_calibrazione.h"

std::string Testo(const TRapportoCalibrazione& r);
// One line: the report with the calibration's id, and a newline.
std::string Json(const TRapportoCalibrazione& r, const std::string& id);

#endif
