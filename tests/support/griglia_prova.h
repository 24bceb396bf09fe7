// Digitized grids for tests and benchmarks, stored and fitted by the calibration's own steps.
#ifndef VELMARIN_TEST_GRIGLIA_PROVA_H
#define VELMARIN_TEST_GRIGLIA_PROVA_H

#include <cstdint>
#include <random>
#include <vector>

#include "digit.h"
#include "digit_accesso.h"
#include "tablet/tabelle.h"

struct TNodo {
    std::int32_t x, y;  // tablet counts
    double est, nord;   // ground
};

// Nodes of a grid of quadEst by quadNord squares, indexed [p][q].
using TNodi = std::vector<std::vector<TNodo>>;

// A regular grid of `lato` counts a square, nodes shaken up to `scossa`, slightly sheared.
inline TNodi GrigliaScossa(int quadEst, int quadNord, std::int32_t lato, std::int32_t scossa, unsigned seme)
{
    std::mt19937 gen(seme);
    std::uniform_int_distribution<std::int32_t> dist(-scossa, scossa);
    TNodi nodi(quadEst + 1, std::vector<TNodo>(quadNord + 1));
    for (int p = 0; p <= quadEst; ++p) {
        for (int q = 0; q <= quadNord; ++q) {
            TNodo& n = nodi[p][q];
            n.x = 2000 + p * lato + q * (lato / 20) + dist(gen);
            n.y = 1500 + q * lato + dist(gen);
            n.est = 1000.0 + p * 50.0;
            n.nord = 2000.0 + q * 50.0;
        }
    }
    return nodi;
}

// Cell (i, j) maps (x, y) to East x + 1 + i + 100 j, North y, so East - x names
// the serving cell; sets the grid's size and state, the corners are the test's.
inline void SegnaCelle(CDigit& d, int quadEst, int quadNord)
{
    CDigitTestAccess::NumQuadEst(d) = quadEst;
    CDigitTestAccess::NumQuadNord(d) = quadNord;
    std::int32_t x[4] = {0, 0, 1, 1}, y[4] = {0, 1, 0, 1};
    double nord[4] = {0, 1, 0, 1};
    for (int i = 0; i < maxQuadrati; ++i)
        for (int j = 0; j < maxQuadrati; ++j) {
            const double c = 1 + i + 100 * j;
            double est[4] = {c, c, c + 1, c + 1};
            CDigitTestAccess::CalcoloCoefOmog(d, x, y, est, nord, CDigitTestAccess::CoefCelle(d)[i][j]);
        }
    CDigitTestAccess::StatoCalibr(d) = calibGriglia;
}

// Nodes into the corners of the cells that meet at them, the grid's size (the
// nodes' own or the counts given), then the fit; returns what it returned.

inline bool CalibraDaNodi(CDigit& d, const TNodi& nodi, int quadEstDati = -1, int quadNordDati = -1)
{
    const int quadEst = static_cast<int>(nodi.size()) - 1;
    const int quadNord = static_cast<int>(nodi[0].size()) - 1;
    double*** est = AllocaTabella<double>(4);
    double*** nord = AllocaTabella<double>(4);
    for (int p = 0; p <= quadEst; ++p)
        for (int q = 0; q <= quadNord; ++q) {
            const TNodo& n = nodi[p][q];
            CDigitTestAccess::MemorizzaNodo(d, p, q, n.x, n.y, n.est, n.nord, est, nord);
        }
    CDigitTestAccess::NumQuadEst(d) = quadEstDati < 0 ? quadEst : quadEstDati;
    CDigitTestAccess::NumQuadNord(d) = quadNordDati < 0 ? quadNord : quadNordDati;
    const bool ok = CDigitTestAccess::CalcoloCoefficientiOmog(d, CDigitTestAccess::AngoliX(d),
                                                              CDigitTestAccess::AngoliY(d), est, nord);
    LiberaTabella(est);
    LiberaTabella(nord);
    return ok;
}

#endif
