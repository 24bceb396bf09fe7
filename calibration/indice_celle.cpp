// Building and reading the spatial index of the grid cells.
#include "calibration/indice_celle.h"

#include <algorithm>
#include <cmath>

#include "calibration/quadrati.h"

namespace {

// Whole part of a half-sum, rounded toward minus infinity.
std::int64_t MetaIntera(std::int64_t somma) { return (somma - (somma & 1)) / 2; }

// A triangle with its three vertices at one position holds every point.
bool TriangoloPuntiforme(const std::int32_t* x, const std::int32_t* y, int a, int b, int c)
{
    return x[a] == x[b] && x[b] == x[c] && y[a] == y[b] && y[b] == y[c];
}

}  // namespace

void TAsse::Imposta(std::int64_t primo, std::int64_t ultimo, int numLati)
{
    minimo = primo;
    larghezza = ultimo - primo + 1;
    lati = numLati;
    scala = static_cast<double>(lati) / static_cast<double>(larghezza);
    // The first value of each bucket, from the exact quotient, moved by the
    // rounding of the scaled one.
    for (int b = 0; b <= lati; ++b) {
        std::int64_t v = minimo + (b * larghezza + lati - 1) / lati;
        while (v > minimo && Secchio(v - 1) >= b) --v;
        while (v < Fine() && Secchio(v) < b) ++v;
        inizio[b] = b == lati ? Fine() : v;
    }
}

int TAsse::Secchio(std::int64_t v) const
{
    if (v <= minimo) return 0;
    if (v >= Fine()) return lati - 1;
    const int b = static_cast<int>(static_cast<double>(v - minimo) * scala);
    return b < lati ? b : lati - 1;
}

namespace {

// The grid as the index reads it: cell number id in scan order gives the
// corners of cell (id / quadNord, id % quadNord).
struct TGriglia {
    int quadNord;
    std::int32_t*** angX;
    std::int32_t*** angY;

    const std::int32_t* X(int id) const { return angX[id / quadNord][id % quadNord]; }
    const std::int32_t* Y(int id) const { return angY[id / quadNord][id % quadNord]; }
    int Codice(int id) const { return CodiceCella(id / quadNord, id % quadNord); }
};

// Least and greatest of the corner boxes and of the reference points' whole
// parts, and every reference point. False for a cell that holds every point.
bool MisuraCelle(TIndiceCelle& ind, const TGriglia& g, int celle, int lati)
{
    std::int64_t bMin[2] = {INT64_MAX, INT64_MAX}, bMax[2] = {INT64_MIN, INT64_MIN};
    std::int64_t rMin[2] = {INT64_MAX, INT64_MAX}, rMax[2] = {INT64_MIN, INT64_MIN};
    for (int id = 0; id < celle; ++id) {
        const std::int32_t* x = g.X(id);
        const std::int32_t* y = g.Y(id);
        if (TriangoloPuntiforme(x, y, 0, 2, 1) || TriangoloPuntiforme(x, y, 2, 3, 1)) return false;
        bMin[0] = std::min<std::int64_t>(bMin[0], *std::min_element(x, x + 4));
        bMax[0] = std::max<std::int64_t>(bMax[0], *std::max_element(x, x + 4));
        bMin[1] = std::min<std::int64_t>(bMin[1], *std::min_element(y, y + 4));
        bMax[1] = std::max<std::int64_t>(bMax[1], *std::max_element(y, y + 4));
        const std::int64_t fx = MetaIntera(static_cast<std::int64_t>(x[0]) + x[3]);
        const std::int64_t fy = MetaIntera(static_cast<std::int64_t>(y[0]) + y[3]);
        rMin[0] = std::min(rMin[0], fx);
        rMax[0] = std::max(rMax[0], fx);
        rMin[1] = std::min(rMin[1], fy);
        rMax[1] = std::max(rMax[1], fy);
        ind.cx[g.Codice(id)] = MetaDiagonale(x[0], x[3]);
        ind.cy[g.Codice(id)] = MetaDiagonale(y[0], y[3]);
    }
    ind.boxX.Imposta(bMin[0], bMax[0], lati);
    ind.boxY.Imposta(bMin[1], bMax[1], lati);
    ind.boxMaxX = bMax[0];
    ind.boxMaxY = bMax[1];
    ind.rifX.Imposta(rMin[0], rMax[0], lati);
    ind.rifY.Imposta(rMin[1], rMax[1], lati);
    return true;
}

// Files the `conta` cells, in scan order, into buckets: counts, turns the
// counts into starts, and fills the lists by cell code, so every list keeps
// the scan order. False when the entries exceed the capacity.
template <class FSecchi>
bool Archivia(const TGriglia& g, int conta, int secchi, std::int32_t* inizio, std::int16_t* voci,
              int capienza, FSecchi perSecchio)
{
    std::fill(inizio, inizio + secchi + 1, 0);
    for (int id = 0; id < conta; ++id) perSecchio(id, [&](int s) { ++inizio[s + 1]; });
    for (int s = 0; s < secchi; ++s) inizio[s + 1] += inizio[s];
    if (inizio[secchi] > capienza) return false;
    std::int32_t prossimo[maxCelle];
    std::copy(inizio, inizio + secchi, prossimo);
    for (int id = 0; id < conta; ++id)
        perSecchio(id, [&](int s) { voci[prossimo[s]++] = static_cast<std::int16_t>(g.Codice(id)); });
    return true;
}

// The box of the reference points filed in each bucket.
void MisuraSecchiRif(TIndiceCelle& ind, int secchi)
{
    for (int b = 0; b < secchi; ++b) {
        double* box = ind.boxRif[b];
        box[0] = box[2] = 1e300;
        box[1] = box[3] = -1e300;
        for (int k = ind.inizioRif[b]; k < ind.inizioRif[b + 1]; ++k) {
            const int codice = ind.celleRif[k];
            box[0] = std::min(box[0], ind.cx[codice]);
            box[1] = std::max(box[1], ind.cx[codice]);
            box[2] = std::min(box[2], ind.cy[codice]);
            box[3] = std::max(box[3], ind.cy[codice]);
        }
    }
}

}  // namespace

bool IndicizzaCelle(TIndiceCelle& ind, int quadEst, int quadNord, std::int32_t*** angX,
                    std::int32_t*** angY)
{
    ind.valido = false;
    const int celle = quadEst * quadNord;
    if (quadEst < 1 || quadNord < 1 || celle > maxCelle) return false;
    ind.quadEst = quadEst;
    ind.quadNord = quadNord;
    const int lati = std::max(quadEst, quadNord);
    const TGriglia g{quadNord, angX, angY};
    if (!MisuraCelle(ind, g, celle, lati)) return false;

    const auto secchiBox = [&](int id, auto&& metti) {
        const std::int32_t* x = g.X(id);
        const std::int32_t* y = g.Y(id);
        const int x1 = ind.boxX.Secchio(*std::max_element(x, x + 4));
        const int y0 = ind.boxY.Secchio(*std::min_element(y, y + 4));
        const int y1 = ind.boxY.Secchio(*std::max_element(y, y + 4));
        for (int bx = ind.boxX.Secchio(*std::min_element(x, x + 4)); bx <= x1; ++bx)
            for (int by = y0; by <= y1; ++by) metti(bx * lati + by);
    };
    if (!Archivia(g, celle, lati * lati, ind.inizioBox, ind.celleBox, maxVociCelle, secchiBox))
        return false;

    const auto secchioRif = [&](int id, auto&& metti) {
        const std::int64_t fx = MetaIntera(static_cast<std::int64_t>(g.X(id)[0]) + g.X(id)[3]);
        const std::int64_t fy = MetaIntera(static_cast<std::int64_t>(g.Y(id)[0]) + g.Y(id)[3]);
        metti(ind.rifX.Secchio(fx) * lati + ind.rifY.Secchio(fy));
    };
    Archivia(g, celle, lati * lati, ind.inizioRif, ind.celleRif, maxCelle, secchioRif);
    MisuraSecchiRif(ind, lati * lati);
    ind.valido = true;
    return true;
}

void CandidatiCella(const TIndiceCelle& ind, std::int32_t x, std::int32_t y,
                    const std::int16_t*& primo, const std::int16_t*& fine)
{
    primo = fine = ind.celleBox;
    if (x < ind.boxX.minimo || x > ind.boxMaxX || y < ind.boxY.minimo || y > ind.boxMaxY) return;
    const int s = ind.boxX.Secchio(x) * ind.boxX.lati + ind.boxY.Secchio(y);
    primo = ind.celleBox + ind.inizioBox[s];
    fine = ind.celleBox + ind.inizioBox[s + 1];
}

namespace {

// Distance from v to the values [da, a], 0 inside; exact for whole counts.
double Scarto(double v, std::int64_t da, std::int64_t a)
{
    if (v < static_cast<double>(da)) return static_cast<double>(da) - v;
    if (v > static_cast<double>(a)) return v - static_cast<double>(a);
    return 0.0;
}

// Whole part of a coordinate, kept within what the partitions can take.
std::int64_t Intero(double v)
{
    constexpr double limite = 4.0e18;
    if (!(v > -limite)) return static_cast<std::int64_t>(-limite);
    if (v > limite) return static_cast<std::int64_t>(limite);
    return static_cast<std::int64_t>(std::floor(v));
}

// Bounds are widened by far more than the rounding of any distance, so no
// reference point as near as the best one is ever skipped.
constexpr double largo = 1.0 + 1e-9;
constexpr double stretto = 1.0 - 1e-9;

struct TVicino {
    double migliore = 1e200;
    int scelta = 0;
    bool trovata = false;
};

// Measures the reference points of one bucket, unless the box of those
// points is surely farther than the best one found.
void VisitaSecchio(const TIndiceCelle& ind, int s, double x, double y, TVicino& v)
{
    if (ind.inizioRif[s] == ind.inizioRif[s + 1]) return;
    const double* box = ind.boxRif[s];
    const double gx = x < box[0] ? box[0] - x : (x > box[1] ? x - box[1] : 0.0);
    const double gy = y < box[2] ? box[2] - y : (y > box[3] ? y - box[3] : 0.0);
    if (v.trovata && (gx * gx + gy * gy) * stretto > v.migliore) return;
    for (int k = ind.inizioRif[s]; k < ind.inizioRif[s + 1]; ++k) {
        const int codice = ind.celleRif[k];
        const double dx = ind.cx[codice] - x;
        const double dy = ind.cy[codice] - y;
        const double d = dx * dx + dy * dy;
        if (d < v.migliore || (d == v.migliore && v.trovata && codice < v.scelta)) {
            v.migliore = d;
            v.scelta = codice;
            v.trovata = true;
        }
    }
}

}  // namespace

// First a candidate from the nearest ring of buckets around the point's own
// that files any reference point; then every bucket that meets the disc of
// that candidate's distance, column by column, each column only over the rows
// the disc reaches there.
int CellaPiuVicina(const TIndiceCelle& ind, double x, double y)
{
    const TAsse& ax = ind.rifX;
    const TAsse& ay = ind.rifY;
    const int lati = ax.lati;
    const int qx = ax.Secchio(Intero(x));
    const int qy = ay.Secchio(Intero(y));
    TVicino v;
    for (int r = 0; r < lati && !v.trovata; ++r) {
        for (int bx = std::max(qx - r, 0); bx <= std::min(qx + r, lati - 1); ++bx) {
            const bool bordo = bx == qx - r || bx == qx + r;
            for (int by = std::max(qy - r, 0); by <= std::min(qy + r, lati - 1); ++by)
                if (bordo || by == qy - r || by == qy + r) VisitaSecchio(ind, bx * lati + by, x, y, v);
        }
    }
    if (!v.trovata) return 0;

    const double raggio2 = v.migliore * largo;
    const double raggio = std::sqrt(raggio2) * largo + 1.0;
    const int x1 = ax.Secchio(Intero(x + raggio));
    for (int bx = ax.Secchio(Intero(x - raggio)); bx <= x1; ++bx) {
        const double gx = Scarto(x, ax.Inizio(bx), ax.Inizio(bx + 1));
        const double resto = raggio2 - gx * gx * stretto;
        if (resto < 0.0) continue;
        const double dy = std::sqrt(resto) * largo + 1.0;
        const int y1 = ay.Secchio(Intero(y + dy));
        for (int by = ay.Secchio(Intero(y - dy)); by <= y1; ++by) VisitaSecchio(ind, bx * lati + by, x, y, v);
    }
    return v.scelta;
}

void TLiberaIndiceCelle::operator()(TIndiceCelle* indice) const { delete indice; }

// Refreshes the index from the object's corner tables and grid size. The
// storage is taken at the first grid fit and kept to the end of the object.
void CDigit::AggiornaIndiceCelle()
{
    if (!indiceCelle) indiceCelle.reset(new TIndiceCelle());
    IndicizzaCelle(*indiceCelle, QuadratiInTabella(numQuadEst), QuadratiInTabella(numQuadNord),
                   angoliX, angoliY);
}

// An assigned object gets the source's index along with its tables.
void CDigit::CopiaIndiceCelle(const CDigit& other)
{
    if (!other.indiceCelle) {
        if (indiceCelle) indiceCelle->valido = false;
        return;
    }
    if (!indiceCelle) indiceCelle.reset(new TIndiceCelle());
    *indiceCelle = *other.indiceCelle;
}
