// The control points behind a tablet's calibration in force, for its
// report. A grid's nodes stay in the tablet's own corner tables; a sparse
// fit keeps only its coefficients there, so its points are kept here, beside
// the object (whose layout is the exported one), from the fit that made the
// map until the object goes or another map replaces it.
#ifndef VELMARIN_CALIBRAZIONE_IN_VIGORE_H
#define VELMARIN_CALIBRAZIONE_IN_VIGORE_H

#include <vector>

#include "calibration/rapporto_calibrazione.h"

class CDigit;

struct TPuntiInVigore {
    std::vector<TPuntoControllo> punti;
    int numEst = 0, numNord = 0;  // a grid's squares; 0 for sparse points
    TLimiti limiti;
};

struct TCalibrazioneInVigore {
    // The points of `d`'s calibration in force; false when it has none.
    static bool Leggi(const CDigit& d, TPuntiInVigore& p);
    // Called by the sparse fit once its map is stored.
    static void RicordaSparsi(const CDigit& d, const double* x, const double* y, const double* est,
                              const double* nord, int n);
    static void Copia(const CDigit& da, const CDigit& a);
    static void Dimentica(const CDigit& d);
};

#endif
