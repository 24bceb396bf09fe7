// The library's calibration report as the terminal host shows it: a page of
// text for the screen, and JSON for the file written beside the GIS output.
#ifndef VELMARIN_HOST_RAPPORTO_CALIBRAZIONE_H
#define VELMARIN_HOST_RAPPORTO_CALIBRAZIONE_H

#include <string>

#include "calibration/rapporto_calibrazione.h"

std::string Testo(const TRapportoCalibrazione& r);
std::string Json(const TRapportoCalibrazione& r);

#endif
