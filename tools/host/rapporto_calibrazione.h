// The calibration report: how far the fitted map misses the control points,
// and what the placement of the points does to the map elsewhere on the
// tablet. For sparse points:
//   - the residual of each point: the library's map applied to its counts,
//     minus the ground coordinates typed;
//   - RMS = sqrt(sum(dE^2 + dN^2) / n), and the standard deviation of one
//     coordinate, sqrt(sum(dE^2 + dN^2) / (2 (n - 3))), which an affine map
//     of six coefficients leaves n - 3 degrees of freedom per coordinate for
//     (none with three points);
//   - with four points or more, each point's leave-one-out error: the host
//     fits the map again without it (its own least squares) and measures
//     the distance at that point;
//   - the placement: how nearly the points lie in a line (the ratio of the
//     smaller to the larger spread of their counts, 0 for a line), the part
//     of the limits their bounding box covers, and the predicted worst error
//     within the limits: a placement error of e counts at every point moves
//     the map at p by at most e * s * sum_k |w_k(p)|, where s is the map's
//     largest scale (ground units per count) and w_k(p) the weight of point
//     k in the fit's value at p; that sum is largest at a corner of the
//     limits. Points close together or in a line make it large.
// For a grid: the cells' scales (ground units per count along their East and
// North sides) and rotations (degrees from the tablet's x axis to the cell's
// East side, counter-clockwise), smallest and largest, and every cell whose
// corners on the tablet are folded (not a convex quadrilateral) or inverted
// (turning the other way from the ground's).
#ifndef VELMARIN_HOST_RAPPORTO_CALIBRAZIONE_H
#define VELMARIN_HOST_RAPPORTO_CALIBRAZIONE_H

#include <string>
#include <vector>

#include "digit.h"
#include "registro_calibrazione.h"

// The placement error assumed at each point for the predicted worst error:
// about a quarter of a millimetre at 1000 lines per inch.
constexpr double erroreDigitalizzazione = 10.0;

struct TRapportoPunti {
    struct TResiduo {
        double est, nord, lunghezza;
    };
    std::vector<TPuntoControllo> punti;
    std::vector<TResiduo> residui;
    double rms = 0;
    double deviazione = 0;            // NaN with three points
    int peggiori[2] = {0, 0};         // numbers (from 1) of the two largest residuals; 0 none
    std::vector<double> lasciaFuori;  // empty with fewer than four points; NaN where the rest fits no map
    double allineamento = 0;          // 0 in a line .. 1 spread evenly
    double copertura = 0;             // NaN without limits
    double fattore = 0;               // max over the limits' corners of sum |w_k|
    double scala = 0;                 // ground units per count, the map's largest
    double peggiorePrevisto = 0;      // erroreDigitalizzazione * scala * fattore
    bool concorda = true;             // the host's own fit is the library's map
    std::vector<std::string> avvisi;
};

struct TRapportoGriglia {
    struct TCella {
        int i, j;
        double scalaEst, scalaNord, rotazione;
        bool piegata, rovesciata;
    };
    std::vector<TCella> celle;
    double scalaMin = 0, scalaMax = 0, rotazioneMin = 0, rotazioneMax = 0;
    std::vector<std::string> avvisi;
};

// False when the points fit no map (fewer than three, or all in a line).
bool RapportoPunti(const CDigit& digit, const std::vector<TPuntoControllo>& punti, TRapportoPunti& r);
// False when the nodes do not make up the grid.
bool RapportoGriglia(const std::vector<TPuntoControllo>& nodi, const TParametriGriglia& g, TRapportoGriglia& r);

std::string Testo(const TRapportoPunti& r);
std::string Testo(const TRapportoGriglia& r);
std::string Json(const TRapportoPunti& r);
std::string Json(const TRapportoGriglia& r);

#endif
