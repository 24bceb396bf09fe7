// The calibrated area: the images of the tablet's working limits, and the
// ground extent of the calibration grid with a margin.
#include "digit.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "calibration/quadrati.h"

namespace {

// A quarter of the interval as a whole number of ground units: the interval
// truncated toward zero to a 32-bit integer, then divided by 4 toward zero.
// An interval beyond the 32-bit range saturates at its end, and NaN gives 0.
std::int32_t Margine(double passo)
{
    constexpr double minimo = std::numeric_limits<std::int32_t>::min();
    constexpr double massimo = std::numeric_limits<std::int32_t>::max();
    std::int32_t intero = 0;
    if (std::isnan(passo))
        intero = 0;
    else if (passo <= minimo)
        intero = std::numeric_limits<std::int32_t>::min();
    else if (passo >= massimo)
        intero = std::numeric_limits<std::int32_t>::max();
    else
        intero = static_cast<std::int32_t>(passo);
    return intero / 4;
}

}  // namespace

// The images of (xMin, yMin) and (xMax, yMax), unsorted, in either map state.
// Stops after the first point when no map is in force.
bool CDigit::GetMaxAreaCalibrata(double& est1, double& nord1, double& est2, double& nord2) const
{
    if (!CalcoloCoordTrasfCalibrFine(dati.xMin, dati.yMin, est1, nord1)) return false;
    return CalcoloCoordTrasfCalibrFine(dati.xMax, dati.yMax, est2, nord2);
}

// The grid's ground extent widened by a quarter interval on each side, only
// in state calibGriglia. A negative interval gives a negative margin, so the
// extent then runs downward on that axis. A count above maxQuadrati covers
// the squares the tables hold.
bool CDigit::GetSoloAreaCalibrata(double& est1, double& nord1, double& est2, double& nord2) const
{
    if (statoCalibr.load(std::memory_order_acquire) != calibGriglia) return false;
    const std::int32_t mE = Margine(passoEst);
    const std::int32_t mN = Margine(passoNord);
    est1 = iniEst - mE;
    nord1 = iniNord - mN;
    est2 = (QuadratiInTabella(numQuadEst) * passoEst + iniEst) + mE;
    nord2 = (QuadratiInTabella(numQuadNord) * passoNord + iniNord) + mN;
    return true;
}
