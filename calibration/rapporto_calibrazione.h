// The calibration report: how well the control points fit one affine map,
// which of them is doubtful, and how good the map is likely to be over the
// tablet's limits. The same numbers for every host: the C interface, Python
// and the terminal host read them from here.
//
// Definitions (ground units throughout):
// - residual: the point's ground coordinates as given, minus the
//   least-squares affine map of all the points at its counts;
// - leave-one-out residual: the same, minus the map fitted without that
//   point (NaN when the other points give no map, and for three points,
//   where two points never do);
// - RMS: sqrt(sum(dE^2 + dN^2) / n);
// - standard deviation of unit weight: sqrt(sum(dE^2 + dN^2) / (2n - 6)),
//   an affine map having three unknowns per coordinate; NaN for n = 3;
// - predicted worst error: the standard error of the fitted position at the
//   worst corner of the limits (of the points' bounding box without limits),
//   sigma0 * sqrt(2 h(p)), where h(p) = 1/n + (p - m)' S^-1 (p - m) is the
//   fit's leverage at p (m the points' mean, S their scatter in counts):
//   what the scatter seen at the points becomes away from them. NaN for
//   three points, and for a grid (its map passes through every node).
//
// The sparse report is of the least-squares map, computed on data centred on
// their means, which keeps its digits at UTM-sized coordinates; the
// library's map in force is that map to within its own rounding. A grid's
// report is of one affine fit of all its nodes: its residuals are the
// sheet's departure from an affine map (shrink, a fold), not errors of the
// grid's own map, which passes through every node.
#ifndef VELMARIN_RAPPORTO_CALIBRAZIONE_H
#define VELMARIN_RAPPORTO_CALIBRAZIONE_H

#include <cstdint>
#include <vector>

class CDigit;

struct TPuntoControllo {
    std::int32_t x, y;  // tablet counts as digitized
    double est, nord;   // ground, as given (a grid's node as computed)
};

struct TResiduoPunto {
    TPuntoControllo punto;
    double residuoEst, residuoNord;
    double lasciaFuoriEst, lasciaFuoriNord;
};

// Warnings, as bits. Thresholds:
enum : unsigned {
    avvisoRaggruppati = 1u << 0,       // the points' box covers under a quarter of the limits
    avvisoAllineati = 1u << 1,         // the smaller spread of the counts is under a tenth of the larger
    avvisoGrossolano = 1u << 2,        // 5 points or more, one leave-one-out residual over 3 times the median
    avvisoSenzaRidondanza = 1u << 3,   // three points: nothing checks them
    avvisoNodoFuoriPosto = 1u << 4,    // a grid node departs from its row and column (see nodiFuoriPosto)
};

constexpr double sogliaCopertura = 0.25, sogliaAllineamento = 0.1, sogliaGrossolano = 3.0;
// A node is out of place when both its row and its column put it further
// than this part of a node spacing from where they would (the midpoint of
// its neighbours; on an edge, the line through the next two nodes).
constexpr double sogliaNodo = 0.2;

struct TRapportoCalibrazione {
    enum TTipo { nessuna = 0, sparsi = 1, griglia = 2 } tipo = nessuna;
    std::vector<TResiduoPunto> punti;  // a grid's nodes with East index fastest
    double rms = 0;
    double deviazione = 0;
    int peggiori[2] = {-1, -1};  // indices of the two longest residuals
    double peggiorePrevisto = 0;
    unsigned avvisi = 0;
    // The numbers behind the warnings.
    double copertura = 0;     // the points' box over the limits, by area; NaN without limits
    double allineamento = 0;  // smaller over larger spread of the counts, 0 in a line
    std::vector<int> nodiFuoriPosto;
};

// The limits of the tablet, when known, for coverage and the predicted error.
struct TLimiti {
    bool definiti = false;
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

// False, with the report empty, for fewer than three points or points that
// fit no affine map (all in a line, or values that overflow).
bool RapportoSparsi(const std::vector<TPuntoControllo>& punti, const TLimiti& limiti, TRapportoCalibrazione& r);
// A grid of numEst by numNord squares, its nodes East index fastest.
bool RapportoGriglia(const std::vector<TPuntoControllo>& nodi, int numEst, int numNord, const TLimiti& limiti,
                     TRapportoCalibrazione& r);
// The report of the calibration in force on `d`, however it was made; false
// when it has none (or its points are not known: a map copied by an older
// assignment).
bool RapportoDi(const CDigit& d, TRapportoCalibrazione& r);

#endif
