// The sparse-point calibration's fit: one affine map of the whole tablet,
// East = a0 + a1·x + a2·y and North = b0 + b1·x + b2·y, by least squares over
// the digitized points, each with the same weight and none rejected.
#include "digit.h"

#include <vector>

#include "calibration/calibrazione_in_vigore.h"
#include "calibration/finiti.h"

namespace {

constexpr int coefAffini = 3;  // constant, factor of x, factor of y

}  // namespace

// Both fits share one design matrix with rows (1, x, y). The North fit runs
// only when the East fit succeeded. A count below 1 gives a zero normal
// matrix, which the solver flags.
void CDigit::CalcoloTrasfCoord(const double* x, const double* y, const double* est,
                               const double* nord, double* coefEst, double* coefNord, int n,
                               bool& errore)
{
    const int righe = n > 0 ? n : 0;
    std::vector<double> valori(static_cast<std::size_t>(righe) * coefAffini);
    std::vector<double*> disegno(static_cast<std::size_t>(righe));
    for (int k = 0; k < righe; ++k) {
        disegno[k] = valori.data() + static_cast<std::size_t>(k) * coefAffini;
        disegno[k][0] = 1.0;
        disegno[k][1] = x[k];
        disegno[k][2] = y[k];
    }
    LeastSqareMatrix(disegno.data(), est, coefEst, righe, coefAffini, errore);
    if (!errore) LeastSqareMatrix(disegno.data(), nord, coefNord, righe, coefAffini, errore);
}

// On success the East fit goes to coefCelle[0][0] and the North fit to
// coefCelle[1][1], constant first, and the state becomes calibPtSparsi, in
// that order. On a singular fit neither the table nor the state changes, nor
// on one whose coefficients are not finite: a value that is not finite, or
// one so large that the normal equations overflow, gives no map.
bool CDigit::CalcoloCoefficientiPtSparsi(double* x, double* y, double* est, double* nord, int n)
{
    double coefEst[coefAffini];
    double coefNord[coefAffini];
    bool errore = true;
    CalcoloTrasfCoord(x, y, est, nord, coefEst, coefNord, n, errore);
    if (errore || !TuttiFiniti(coefEst, coefAffini) || !TuttiFiniti(coefNord, coefAffini)) return false;
    for (int k = 0; k < coefAffini; ++k) {
        coefCelle[0][0][k] = coefEst[k];
        coefCelle[1][1][k] = coefNord[k];
    }
    statoCalibr.store(calibPtSparsi, std::memory_order_release);
    TCalibrazioneInVigore::RicordaSparsi(*this, x, y, est, nord, n);
    return true;
}
