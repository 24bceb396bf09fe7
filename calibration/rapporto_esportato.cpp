// The calibration report in the plain records of the exported interfaces.
#include "calibration/rapporto_calibrazione.h"
#include "digit.h"
#include "velmarin.h"

int RapportoCalibrazione(const CDigit& digit, velmarin_fit_summary* summary, velmarin_point_residual* points,
                         int max_points)
{
    TRapportoCalibrazione r;
    try {
        if (!RapportoDi(digit, r)) return 0;
    } catch (...) {  // want of memory: no report
        return 0;
    }
    const int n = static_cast<int>(r.punti.size());
    if (summary)
        *summary = {r.tipo, n, r.rms, r.deviazione, {r.peggiori[0], r.peggiori[1]}, r.peggiorePrevisto, r.avvisi};
    for (int k = 0; points && k < n && k < max_points; ++k) {
        const TResiduoPunto& q = r.punti[static_cast<std::size_t>(k)];
        points[k] = {q.punto.x, q.punto.y, q.punto.est, q.punto.nord, q.residuoEst, q.residuoNord,
                     q.lasciaFuoriEst, q.lasciaFuoriNord};
    }
    return n;
}
