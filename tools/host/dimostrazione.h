// The scripted demonstration: a simulated Summa MicroGrid 3 is set up, its
// limits set, calibrated by four points through the library's own dialogs
// (a script types the ground points while the simulated tablet presses
// button 1 at the tablet points), and 100 presses are printed as ground
// coordinates. It ends by itself; 0 when all went through.
#ifndef VELMARIN_HOST_DIMOSTRAZIONE_H
#define VELMARIN_HOST_DIMOSTRAZIONE_H

#include <cstdio>

int Dimostrazione(std::FILE* out);

#endif
