// The sparse-point calibration as the user lives it: type a point's ground
// coordinates, digitize it, again, until a dialog is cancelled or 21 points
// are stored; then one affine map is fitted to all of them.
#include "calibration/domanda_ricalibrazione.h"
#include "digit.h"
#include "tablet/modulo.h"

namespace {
constexpr unsigned idTitoloPtSparsi = 10047;
constexpr int maxPunti = 21;  // the capacity of the point lists
constexpr int minPunti = 3;   // an affine map has three unknowns per axis
}  // namespace

bool CDigit::CalibraPtSparsi(GWnd* parent)
{
    const std::string titolo = ModuloLibreria().loadString(idTitoloPtSparsi);
    if (IsCalibrato() && !ConfermaRicalibrazione(parent, titolo)) return true;
    statoCalibr = calibNessuna;
    Init(parent);
    SendInitString();

    double x[maxPunti], y[maxPunti], est[maxPunti], nord[maxPunti];
    int n = 0;
    while (n < maxPunti) {
        double e = 0, nd = 0;
        if (dialogSelectPtiSparsi(parent, e, nd) != 1) break;
        int px = 0, py = 0;
        if (dialogGetPnt(parent, titolo.c_str(), this, e, nd, px, py) != 1) break;
        x[n] = px;
        y[n] = py;
        est[n] = e;
        nord[n] = nd;
        ++n;
    }
    return n >= minPunti && CalcoloCoefficientiPtSparsi(x, y, est, nord, n);
}
