// The grid calibration's fit: for every cell, the projective map that sends
// its four digitized corners exactly onto their four ground positions,
//   East  = (c0·x + c1·y + c2) / (c6·x + c7·y + 1)
//   North = (c3·x + c4·y + c5) / (c6·x + c7·y + 1).
#include "digit.h"

#include <vector>

#include "calibration/finiti.h"
#include "calibration/indice_celle.h"
#include "calibration/quadrati.h"

namespace {

constexpr int coefOmog = 8;
constexpr int angoliCella = 4;

// The negative of a count as a double. A 32-bit negation has no result for
// the most negative count; there the exact negative is taken.
double Negato(std::int32_t v) { return static_cast<double>(-static_cast<std::int64_t>(v)); }

}  // namespace

// Eight equations in c0..c7, two per corner: East·w = c0·x + c1·y + c2 and
// North·w = c3·x + c4·y + c5 with w = c6·x + c7·y + 1. The negated counts are
// converted before the product with the ground value is taken in double.
// A cell whose coefficients are not finite (a value that is not, or one that
// overflows the system) is one that cannot be solved.
bool CDigit::CalcoloCoefOmog(std::int32_t* x, std::int32_t* y, double* est, double* nord,
                             double* coef)
{
    std::vector<double> valori(coefOmog * coefOmog, 0.0);
    std::vector<double*> a(coefOmog);
    std::vector<double> b(coefOmog);
    for (int r = 0; r < coefOmog; ++r) a[r] = valori.data() + r * coefOmog;

    for (int k = 0; k < angoliCella; ++k) {
        const double xd = x[k];
        const double yd = y[k];
        double* rigaEst = a[2 * k];
        double* rigaNord = a[2 * k + 1];
        rigaEst[0] = xd;
        rigaEst[1] = yd;
        rigaEst[2] = 1.0;
        rigaEst[6] = Negato(x[k]) * est[k];
        rigaEst[7] = Negato(y[k]) * est[k];
        b[2 * k] = est[k];
        rigaNord[3] = xd;
        rigaNord[4] = yd;
        rigaNord[5] = 1.0;
        rigaNord[6] = Negato(x[k]) * nord[k];
        rigaNord[7] = Negato(y[k]) * nord[k];
        b[2 * k + 1] = nord[k];
    }
    bool errore = true;
    SolGausJ(a.data(), b.data(), coef, coefOmog, errore);
    return !errore && TuttiFiniti(coef, coefOmog);
}

// Solves every cell of the grid, East index outermost, into coefCelle. The
// first unsolvable cell ends the work with false: the cells already done keep
// their new rows and the state stays as it was. Only when every cell is
// solved, and the cells are indexed for the map, does the state become
// calibGriglia. A count above maxQuadrati serves
// only the cells the tables hold (see QuadratiInTabella).
bool CDigit::CalcoloCoefficientiOmog(std::int32_t*** angX, std::int32_t*** angY, double*** angEst,
                                     double*** angNord)
{
    const int quadEst = QuadratiInTabella(numQuadEst);
    const int quadNord = QuadratiInTabella(numQuadNord);
    if (indiceCelle) indiceCelle->valido = false;
    for (int i = 0; i < quadEst; ++i) {
        for (int j = 0; j < quadNord; ++j) {
            if (!CalcoloCoefOmog(angX[i][j], angY[i][j], angEst[i][j], angNord[i][j],
                                 coefCelle[i][j]))
                return false;
        }
    }
    AggiornaIndiceCelle();
    statoCalibr.store(calibGriglia, std::memory_order_release);
    return true;
}
