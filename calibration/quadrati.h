// How many grid squares of an axis the calibration tables serve.
//
// The tables hold maxQuadrati cells per axis, while a host may ask for more
// squares. Such a grid is cut to its first maxQuadrati squares on that axis:
// the node digitizing, the cell fits, the cell search and the calibrated area
// all count squares through this function, so nothing is ever read or written
// outside the tables. The count itself is kept as the host gave it. A count
// below 1 serves no square.
#ifndef VELMARIN_QUADRATI_H
#define VELMARIN_QUADRATI_H

#include "digit.h"

inline int QuadratiInTabella(int numQuadrati)
{
    if (numQuadrati < 0) return 0;
    return numQuadrati > maxQuadrati ? maxQuadrati : numQuadrati;
}

#endif
