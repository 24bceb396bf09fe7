// The scripted demonstration, all through the library's own dialogs: a
// simulated Summa MicroGrid 3 is chosen in the tablet selection and its
// limits digitized there, then it is calibrated by four points (a script
// types the ground points while the simulated tablet presses button 1 at the
// tablet points), and 100 presses are printed as ground coordinates. It ends by itself; 0 when all went through.
#ifndef VELMARIN_HOST_DIMOSTRAZIONE_H
#define VELMARIN_HOST_DIMOSTRAZIONE_H

#include <cstdio>

int Dimostrazione(std::FILE* out);

#endif
