// The run-time map from tablet counts to ground coordinates: the affine map of
// a sparse-point calibration, or the projective map of the grid cell that
// holds the point (or of the nearest cell). Nothing here allocates or keeps
// state between calls.
#include "digit.h"

#include <cstdint>

#include "calibration/indice_celle.h"
#include "calibration/quadrati.h"
#include "reports/digit_link.h"

// East and North of the point through one grid cell's row, in a fixed order
// of operations. The denominator is not tested: where it is 0.0 the results
// are infinities or NaN.
void CDigit::CalcoloTrasfOmog(std::int32_t x, std::int32_t y, double& est, double& nord,
                              const double* coef) const
{
    const double xd = x;
    const double yd = y;
    const double w = (coef[7] * yd + coef[6] * xd) + 1.0;
    double e = (coef[1] * yd + coef[0] * xd) + coef[2];
    double n = (coef[3] * xd + coef[4] * yd) + coef[5];
    e = e / w;
    n = n / w;
    est = e;
    nord = n;
}

// In state calibGriglia the first cell in scan order (East index outermost)
// that holds the point gives the map. When none does, the cell whose
// reference point (the midpoint of its diagonal from corner 0 to corner 3) is
// nearest gives it, even far outside the grid; on equal distances the earlier
// cell stays. The corner sums are exact, so a half count survives. After a
// grid fit the cell index (calibration/indice_celle.h) finds the same cell
// without testing every one.
bool CDigit::CalcoloCoordTrasfCalibrFine(int x, int y, double& est, double& nord) const
{
    const double xd = x;
    const double yd = y;
    if (statoCalibr == calibPtSparsi) {
        const double* c = coefCelle[0][0];
        const double* d = coefCelle[1][1];
        est = (c[1] * xd + c[0]) + c[2] * yd;
        nord = (d[1] * xd + d[0]) + d[2] * yd;
        return true;
    }
    if (statoCalibr != calibGriglia) return false;

    const int quadEst = QuadratiInTabella(numQuadEst);
    const int quadNord = QuadratiInTabella(numQuadNord);
    const TIndiceCelle* indice = indiceCelle.get();
    if (indice && indice->valido && indice->quadEst == quadEst && indice->quadNord == quadNord) {
        const std::int16_t* primo = nullptr;
        const std::int16_t* fine = nullptr;
        CandidatiCella(*indice, x, y, primo, fine);
        int scelta = -1;
        for (; primo != fine && scelta < 0; ++primo) {
            if (PtInRect(angoliX[CellaEst(*primo)][CellaNord(*primo)],
                         angoliY[CellaEst(*primo)][CellaNord(*primo)], x, y))
                scelta = *primo;
        }
        if (scelta < 0) scelta = CellaPiuVicina(*indice, xd, yd);
        CalcoloTrasfOmog(x, y, est, nord, coefCelle[CellaEst(scelta)][CellaNord(scelta)]);
        return true;
    }

    // No index for these tables: every cell in scan order.
    for (int i = 0; i < quadEst; ++i) {
        for (int j = 0; j < quadNord; ++j) {
            if (PtInRect(angoliX[i][j], angoliY[i][j], x, y)) {
                CalcoloTrasfOmog(x, y, est, nord, coefCelle[i][j]);
                return true;
            }
        }
    }

    double migliore = 1e200;
    int iSel = 0;
    int jSel = 0;
    for (int i = 0; i < quadEst; ++i) {
        for (int j = 0; j < quadNord; ++j) {
            const std::int32_t* ax = angoliX[i][j];
            const std::int32_t* ay = angoliY[i][j];
            const double cx = MetaDiagonale(ax[0], ax[3]);
            const double cy = MetaDiagonale(ay[0], ay[3]);
            const double d = (cx - xd) * (cx - xd) + (cy - yd) * (cy - yd);
            if (d < migliore) {
                migliore = d;
                iSel = i;
                jSel = j;
            }
        }
    }
    CalcoloTrasfOmog(x, y, est, nord, coefCelle[iSel][jSel]);
    return true;
}

// The current report through the map in force. The button argument receives
// the button the report announces (-1 for a mere movement), but only when a
// map is in force. Called from inside a notification, the three reads see the
// report that caused it.
bool CDigit::TrasformaCoordDigit(double& est, double& nord, int& button)
{
    if (statoCalibr == calibNessuna) return false;
    button = Leggi(digitLink.bottonePremuto);
    return CalcoloCoordTrasfCalibrFine(Leggi(digitLink.xReport), Leggi(digitLink.yReport), est,
                                       nord);
}
