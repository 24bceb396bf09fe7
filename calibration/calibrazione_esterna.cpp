// Calibration from points that a host hands over. Each fit runs as its
// procedure runs once the points are in: the state goes to calibNessuna, the
// procedure's own storing and fitting follow. Only a failure differs: the
// map that was in force is put back, where the procedure leaves none.
#include "calibration/calibrazione_esterna.h"

#include <string>

#include "calibration/finiti.h"
#include "digit.h"
#include "link/ultimo_errore.h"
#include "tablet/tabelle.h"

namespace {

constexpr int minPunti = 3;   // an affine map has three unknowns per axis
constexpr int maxPunti = 21;  // as many as the sparse-point procedure takes

bool Rifiuto(const std::string& perche)
{
    RegistraErrore(perche);
    return false;
}

// False, with the reason recorded, for a grid that cannot be fitted.
bool GrigliaAccettabile(const TGrigliaDigitalizzata& g)
{
    const double terreno[] = {g.iniEst, g.iniNord, g.passoEst, g.passoNord};
    if (g.numQuadEst < 1 || g.numQuadEst > maxQuadrati || g.numQuadNord < 1 || g.numQuadNord > maxQuadrati)
        return Rifiuto("a grid has 1 to 21 squares each way, not " + std::to_string(g.numQuadEst) + " by " +
                       std::to_string(g.numQuadNord));
    if (!g.x || !g.y) return Rifiuto("a grid fit needs its nodes' x and y; one is null");
    if (!TuttiFiniti(terreno, 4)) return Rifiuto("the grid's origin and steps must be finite");
    return true;
}

bool PuntiAccettabili(int n, const std::int32_t* x, const std::int32_t* y, const double* est, const double* nord)
{
    if (n < minPunti || n > maxPunti)
        return Rifiuto("a sparse fit takes 3 to 21 points, not " + std::to_string(n));
    if (!x || !y || !est || !nord) return Rifiuto("a sparse fit needs x, y, east and north; one is null");
    if (!TuttiFiniti(est, n) || !TuttiFiniti(nord, n)) return Rifiuto("a ground coordinate is not finite");
    return true;
}

}  // namespace

// The grid, its corners and the rows of the cells solved before the one
// that failed; the fields bear the names of CDigit's own.
struct TCalibrazioneEsterna::TMappa {
    explicit TMappa(const CDigit& d) : statoCalibr(d.statoCalibr)
    {
        CopiaGriglia(*this, d);
        CopiaTabelle(*this, d);
    }
    std::int32_t statoCalibr, numQuadEst, numQuadNord;
    double iniEst, iniNord, passoEst, passoNord;
    TTabellaLocale<double> coef{8};
    TTabellaLocale<std::int32_t> angX{4}, angY{4};
    double*** coefCelle = coef.t;
    std::int32_t*** angoliX = angX.t;
    std::int32_t*** angoliY = angY.t;
};

template <class A, class B>
void TCalibrazioneEsterna::CopiaGriglia(A& a, const B& b)
{
    a.numQuadEst = b.numQuadEst;
    a.numQuadNord = b.numQuadNord;
    a.iniEst = b.iniEst;
    a.iniNord = b.iniNord;
    a.passoEst = b.passoEst;
    a.passoNord = b.passoNord;
}

template <class A, class B>
void TCalibrazioneEsterna::CopiaTabelle(A& a, const B& b)
{
    CopiaTabella(a.coefCelle, b.coefCelle, 8);
    CopiaTabella(a.angoliX, b.angoliX, 4);
    CopiaTabella(a.angoliY, b.angoliY, 4);
}

// The state comes back last, once the map it names is whole again.
void TCalibrazioneEsterna::Ripristina(CDigit& d, const TMappa& m)
{
    CopiaGriglia(d, m);
    CopiaTabelle(d, m);
    if (m.statoCalibr == calibGriglia) d.AggiornaIndiceCelle();
    d.statoCalibr = m.statoCalibr;
}

// The grid as the grid dialog would give it, and its nodes in the order and
// with the ground values the procedure computes while it asks for them.
void TCalibrazioneEsterna::MemorizzaNodi(CDigit& d, const TGrigliaDigitalizzata& g, double*** est,
                                         double*** nord)
{
    CopiaGriglia(d, g);
    for (int i = 0; i <= d.numQuadEst; ++i) {
        const double e = i * d.passoEst + d.iniEst;
        for (int j = 0; j <= d.numQuadNord; ++j) {
            const double n = j * d.passoNord + d.iniNord;
            const int k = j * (g.numQuadEst + 1) + i;
            d.MemorizzaNodo(i, j, g.x[k], g.y[k], e, n, est, nord);
        }
    }
}

bool TCalibrazioneEsterna::PuntiSparsi(CDigit& d, int n, const std::int32_t* x,
                                       const std::int32_t* y, const double* est, const double* nord)
{
    if (!PuntiAccettabili(n, x, y, est, nord)) return false;
    double px[maxPunti], py[maxPunti], pe[maxPunti], pn[maxPunti];
    for (int k = 0; k < n; ++k) {
        px[k] = x[k];
        py[k] = y[k];
        pe[k] = est[k];
        pn[k] = nord[k];
    }
    // A failed fit touches no coefficient: the state alone comes back.
    const std::int32_t stato = d.statoCalibr;
    d.statoCalibr = calibNessuna;
    if (d.CalcoloCoefficientiPtSparsi(px, py, pe, pn, n)) return true;
    d.statoCalibr = stato;
    return Rifiuto("the points give no map: they lie on one line, or their values overflow the fit");
}

bool TCalibrazioneEsterna::Griglia(CDigit& d, const TGrigliaDigitalizzata& g)
{
    if (!GrigliaAccettabile(g)) return false;
    const TMappa prima(d);
    d.statoCalibr = calibNessuna;
    TTabellaLocale<double> terrenoEst(4), terrenoNord(4);
    MemorizzaNodi(d, g, terrenoEst.t, terrenoNord.t);
    if (d.CalcoloCoefficientiOmog(d.angoliX, d.angoliY, terrenoEst.t, terrenoNord.t)) return true;
    Ripristina(d, prima);
    return Rifiuto("a cell gives no map: its corners lie on one line, or its values overflow the fit");
}
