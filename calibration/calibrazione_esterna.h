// Calibration from points that a host hands over, for hosts with their own
// dialogs: the same fits as CalibraPtSparsi and CalibraGriglia, through
// their own code, so that the map and the state they leave are the same to
// the bit. Unlike the procedures, a set that gives no map leaves the
// calibration in force as it was: the host may let its user mend a point and
// try again, with nothing lost meanwhile.
#ifndef VELMARIN_CALIBRAZIONE_ESTERNA_H
#define VELMARIN_CALIBRAZIONE_ESTERNA_H

#include <cstdint>

class CDigit;

// A digitized grid: numQuadEst by numQuadNord squares; node (p, q) lies on
// the ground at East p·passoEst + iniEst, North q·passoNord + iniNord, and
// was digitized at x[k], y[k] with k = q·(numQuadEst + 1) + p, East varying
// fastest. The grid's fields bear the names of CDigit's own.
struct TGrigliaDigitalizzata {
    std::int32_t numQuadEst, numQuadNord;
    double iniEst, iniNord, passoEst, passoNord;
    const std::int32_t* x;
    const std::int32_t* y;
};

struct TCalibrazioneEsterna {
    // The affine map of n points (3 to 21). False, and nothing changed, for
    // another count, a missing list, a value that is not finite, or a set
    // the least squares cannot fit.
    static bool PuntiSparsi(CDigit& d, int n, const std::int32_t* x, const std::int32_t* y,
                            const double* est, const double* nord);
    // One projective map per cell (1 to 21 squares per axis). False, and
    // nothing changed, for another count, missing nodes, a ground value that
    // is not finite, or a cell that cannot be solved.
    static bool Griglia(CDigit& d, const TGrigliaDigitalizzata& g);

private:
    struct TMappa;  // what a failed grid fit overwrites
    template <class A, class B>
    static void CopiaGriglia(A& a, const B& b);
    template <class A, class B>
    static void CopiaTabelle(A& a, const B& b);
    static void Ripristina(CDigit& d, const TMappa& m);
    static void MemorizzaNodi(CDigit& d, const TGrigliaDigitalizzata& g, double*** est, double*** nord);
};

#endif
