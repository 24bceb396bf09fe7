// The question both calibration procedures ask before they replace a map.
#ifndef VELMARIN_DOMANDA_RICALIBRAZIONE_H
#define VELMARIN_DOMANDA_RICALIBRAZIONE_H

#include <string>

class GWnd;

// Warns that the tablet is already calibrated and asks whether to go on;
// false when the user answers no.
bool ConfermaRicalibrazione(GWnd* parent, const std::string& titolo);

#endif
