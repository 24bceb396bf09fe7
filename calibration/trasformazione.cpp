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
// cell stays. After a grid fit the cell index finds that same cell without
// testing every one.
bool CDigit::CalcoloCoordTrasfCalibrFine(int x, int y, double& est, double& nord) const
{
    const double xd = x;
    const double yd = y;
    const std::int32_t stato = statoCalibr.load(std::memory_order_acquire);
    if (stato == calibPtSparsi) {
        const double* c = coefCelle[0][0];
        const double* d = coefCelle[1][1];
        est = (c[1] * xd + c[0]) + c[2] * yd;
        nord = (d[1] * xd + d[0]) + d[2] * yd;
        return true;
    }
    if (stato != calibGriglia) return false;

    const TIndiceCelle* indice = indiceCelle.get();
    const bool indicizzata = indice && indice->valido &&
                             indice->quadEst == QuadratiInTabella(numQuadEst) &&
                             indice->quadNord == QuadratiInTabella(numQuadNord);
    const int cella = indicizzata ? CercaCellaIndicizzata(x, y) : CercaCellaScandita(x, y);
    CalcoloTrasfOmog(x, y, est, nord, coefCelle[CellaEst(cella)][CellaNord(cella)]);
    return true;
}

// The cell search through the index: the candidates of the point's bucket
// in scan order, else the nearest reference point.
int CDigit::CercaCellaIndicizzata(std::int32_t x, std::int32_t y) const
{
    const std::int16_t* primo = nullptr;
    const std::int16_t* fine = nullptr;
    CandidatiCella(*indiceCelle, x, y, primo, fine);
    for (; primo != fine; ++primo) {
        const int i = CellaEst(*primo);
        const int j = CellaNord(*primo);
        if (PtInRect(angoliX[i][j], angoliY[i][j], x, y)) return *primo;
    }
    return CellaPiuVicina(*indiceCelle, x, y);
}

// The cell search over every cell, for tables the index does not describe.
// A grid of no cell selects cell (0, 0).
int CDigit::CercaCellaScandita(std::int32_t x, std::int32_t y) const
{
    const int quadEst = QuadratiInTabella(numQuadEst);
    const int quadNord = QuadratiInTabella(numQuadNord);
    for (int i = 0; i < quadEst; ++i)
        for (int j = 0; j < quadNord; ++j)
            if (PtInRect(angoliX[i][j], angoliY[i][j], x, y)) return CodiceCella(i, j);

    const double xd = x;
    const double yd = y;
    double migliore = 1e200;
    int scelta = CodiceCella(0, 0);
    for (int i = 0; i < quadEst; ++i) {
        for (int j = 0; j < quadNord; ++j) {
            const double cx = MetaDiagonale(angoliX[i][j][0], angoliX[i][j][3]);
            const double cy = MetaDiagonale(angoliY[i][j][0], angoliY[i][j][3]);
            const double d = (cx - xd) * (cx - xd) + (cy - yd) * (cy - yd);
            if (d < migliore) {
                migliore = d;
                scelta = CodiceCella(i, j);
            }
        }
    }
    return scelta;
}

// The current report through the map in force. The button argument receives
// the button the report announces (-1 for a mere movement), but only when a
// map is in force. Called from inside a notification, the three reads see the
// report that caused it.
bool CDigit::TrasformaCoordDigit(double& est, double& nord, int& button)
{
    if (statoCalibr.load(std::memory_order_acquire) == calibNessuna) return false;
    button = Leggi(digitLink.bottonePremuto);
    return CalcoloCoordTrasfCalibrFine(Leggi(digitLink.xReport), Leggi(digitLink.yReport), est,
                                       nord);
}
