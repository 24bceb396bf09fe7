// The grid calibration as the user lives it: describe a regular ground grid,
// digitize each node (East index outermost), then one projective map is
// solved per cell from its four corners.
#include "calibration/domanda_ricalibrazione.h"
#include "digit.h"
#include "platform/winui.h"
#include "tablet/modulo.h"
#include "tablet/tabelle.h"

namespace {
constexpr unsigned idTitoloGriglia = 10048;
constexpr unsigned beepRifiuto = 48;
}  // namespace

// The grid dialog promises counts above 0 but sets no upper bound, while the
// tables hold maxQuadrati squares per axis. A larger grid is refused the way
// the dialog refuses its own bad entries: a beep, and the dialog again. The
// object's grid fields take only an accepted grid.
bool CDigit::ChiediGriglia(GWnd* parent)
{
    for (;;) {
        std::int32_t qe = 0, qn = 0;
        double ie = 0, in = 0, pe = 0, pn = 0;
        if (dialogCalibraGriglia(parent, qe, qn, ie, in, pe, pn) != 1) return false;
        if (qe <= maxQuadrati && qn <= maxQuadrati) {
            numQuadEst = qe;
            numQuadNord = qn;
            iniEst = ie;
            iniNord = in;
            passoEst = pe;
            passoNord = pn;
            return true;
        }
        MessageBeep(beepRifiuto);
    }
}

// Stores node (i, j) into the corners of the cells that meet at it: corner 3
// of the cell below-left, 2 of the one left, 1 of the one below, 0 of its own.
void CDigit::MemorizzaNodo(int i, int j, std::int32_t x, std::int32_t y, double est, double nord,
                           double*** angEst, double*** angNord)
{
    struct { int di, dj, angolo; } const celle[] = {{-1, -1, 3}, {-1, 0, 2}, {0, -1, 1}, {0, 0, 0}};
    for (const auto& c : celle) {
        const int ci = i + c.di, cj = j + c.dj;
        if (ci < 0 || cj < 0 || ci >= maxQuadrati || cj >= maxQuadrati) continue;
        angoliX[ci][cj][c.angolo] = x;
        angoliY[ci][cj][c.angolo] = y;
        angEst[ci][cj][c.angolo] = est;
        angNord[ci][cj][c.angolo] = nord;
    }
}

bool CDigit::CalibraGriglia(GWnd* parent)
{
    const std::string titolo = ModuloLibreria().loadString(idTitoloGriglia);
    if (IsCalibrato() && !ConfermaRicalibrazione(parent, titolo)) return true;
    statoCalibr = calibNessuna;
    Init(parent);
    SendInitString();

    TTabellaLocale<double> terrenoEst(4), terrenoNord(4);  // ground of the corners, this run only
    if (!ChiediGriglia(parent)) return false;
    for (int i = 0; i <= numQuadEst; ++i) {
        const double est = i * passoEst + iniEst;
        for (int j = 0; j <= numQuadNord; ++j) {
            const double nord = j * passoNord + iniNord;
            std::int32_t x = 0, y = 0;
            if (dialogGetPnt(parent, titolo.c_str(), this, est, nord, x, y) != 1) return false;
            MemorizzaNodo(i, j, x, y, est, nord, terrenoEst.t, terrenoNord.t);
        }
    }
    return CalcoloCoefficientiOmog(angoliX, angoliY, terrenoEst.t, terrenoNord.t);
}
