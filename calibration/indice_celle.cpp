// Building and reading the spatial index of the grid cells.
#include "calibration/indice_celle.h"

#include <algorithm>

#include "calibration/quadrati.h"

namespace {

// Whole part of a half-sum, rounded toward minus infinity.
std::int64_t MetaIntera(std::int64_t somma) { return (somma - (somma & 1)) / 2; }

// A triangle with its three vertices at one position holds every point.
bool TriangoloPuntiforme(const std::int32_t* x, const std::int32_t* y, int a, int b, int c)
{
    return x[a] == x[b] && x[b] == x[c] && y[a] == y[b] && y[b] == y[c];
}

TAsse Asse(std::int64_t minimo, std::int64_t massimo, int lati)
{
    return TAsse{minimo, massimo - minimo + 1, lati};
}

// Files `conta` items into buckets: counts, turns the counts into starts, and
// fills the lists in item order, so every list keeps the scan order.
template <class FSecchi>
bool Archivia(int conta, int secchi, std::int32_t* inizio, std::int16_t* voci, int capienza,
              FSecchi perSecchio)
{
    std::fill(inizio, inizio + secchi + 1, 0);
    for (int id = 0; id < conta; ++id) perSecchio(id, [&](int s) { ++inizio[s + 1]; });
    for (int s = 0; s < secchi; ++s) inizio[s + 1] += inizio[s];
    if (inizio[secchi] > capienza) return false;
    std::int32_t prossimo[maxCelle];
    std::copy(inizio, inizio + secchi, prossimo);
    for (int id = 0; id < conta; ++id)
        perSecchio(id, [&](int s) { voci[prossimo[s]++] = static_cast<std::int16_t>(id); });
    return true;
}

}  // namespace

int TAsse::Secchio(std::int64_t v) const
{
    if (v <= minimo) return 0;
    if (v >= minimo + larghezza) return lati - 1;
    return static_cast<int>((v - minimo) * lati / larghezza);
}

std::int64_t TAsse::Inizio(int secchio) const
{
    return minimo + (secchio * larghezza + lati - 1) / lati;
}

bool IndicizzaCelle(TIndiceCelle& ind, int quadEst, int quadNord, std::int32_t*** angX,
                    std::int32_t*** angY)
{
    ind.valido = false;
    const int celle = quadEst * quadNord;
    if (quadEst < 1 || quadNord < 1 || celle > maxCelle) return false;
    ind.quadEst = quadEst;
    ind.quadNord = quadNord;
    const int lati = std::max(quadEst, quadNord);

    std::int64_t bMin[2] = {INT64_MAX, INT64_MAX}, bMax[2] = {INT64_MIN, INT64_MIN};
    std::int64_t rMin[2] = {INT64_MAX, INT64_MAX}, rMax[2] = {INT64_MIN, INT64_MIN};
    for (int id = 0; id < celle; ++id) {
        const std::int32_t* x = angX[id / quadNord][id % quadNord];
        const std::int32_t* y = angY[id / quadNord][id % quadNord];
        if (TriangoloPuntiforme(x, y, 0, 2, 1) || TriangoloPuntiforme(x, y, 2, 3, 1)) return false;
        for (int c = 0; c < 4; ++c) {
            bMin[0] = std::min<std::int64_t>(bMin[0], x[c]);
            bMax[0] = std::max<std::int64_t>(bMax[0], x[c]);
            bMin[1] = std::min<std::int64_t>(bMin[1], y[c]);
            bMax[1] = std::max<std::int64_t>(bMax[1], y[c]);
        }
        const std::int64_t fx = MetaIntera(static_cast<std::int64_t>(x[0]) + x[3]);
        const std::int64_t fy = MetaIntera(static_cast<std::int64_t>(y[0]) + y[3]);
        rMin[0] = std::min(rMin[0], fx);
        rMax[0] = std::max(rMax[0], fx);
        rMin[1] = std::min(rMin[1], fy);
        rMax[1] = std::max(rMax[1], fy);
        ind.cx[id] = MetaDiagonale(x[0], x[3]);
        ind.cy[id] = MetaDiagonale(y[0], y[3]);
    }
    ind.boxX = Asse(bMin[0], bMax[0], lati);
    ind.boxY = Asse(bMin[1], bMax[1], lati);
    ind.boxMaxX = bMax[0];
    ind.boxMaxY = bMax[1];
    ind.rifX = Asse(rMin[0], rMax[0], lati);
    ind.rifY = Asse(rMin[1], rMax[1], lati);

    const bool boxOk = Archivia(celle, lati * lati, ind.inizioBox, ind.celleBox, maxVociCelle,
                                [&](int id, auto&& metti) {
        const std::int32_t* x = angX[id / quadNord][id % quadNord];
        const std::int32_t* y = angY[id / quadNord][id % quadNord];
        const int x0 = ind.boxX.Secchio(*std::min_element(x, x + 4));
        const int x1 = ind.boxX.Secchio(*std::max_element(x, x + 4));
        const int y0 = ind.boxY.Secchio(*std::min_element(y, y + 4));
        const int y1 = ind.boxY.Secchio(*std::max_element(y, y + 4));
        for (int bx = x0; bx <= x1; ++bx)
            for (int by = y0; by <= y1; ++by) metti(bx * lati + by);
    });
    if (!boxOk) return false;

    Archivia(celle, lati * lati, ind.inizioRif, ind.celleRif, maxCelle, [&](int id, auto&& metti) {
        const std::int32_t* x = angX[id / quadNord][id % quadNord];
        const std::int32_t* y = angY[id / quadNord][id % quadNord];
        const int bx = ind.rifX.Secchio(MetaIntera(static_cast<std::int64_t>(x[0]) + x[3]));
        const int by = ind.rifY.Secchio(MetaIntera(static_cast<std::int64_t>(y[0]) + y[3]));
        metti(bx * lati + by);
    });
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

// Distance from v to the values [da, a), 0 inside; as a double of a whole
// number, exact.
double Scarto(double v, std::int64_t da, std::int64_t a)
{
    if (v < static_cast<double>(da)) return static_cast<double>(da) - v;
    if (v > static_cast<double>(a)) return v - static_cast<double>(a);
    return 0.0;
}

// A lower bound of the squared distance from (x, y) to every reference point
// outside the square of buckets [qx - r, qx + r] x [qy - r, qy + r]; a
// negative value when there is none. Reference points of bucket b lie in
// [Inizio(b), Inizio(b + 1)), since a half count stays below the next whole.
double MinimoFuoriAnello(const TIndiceCelle& ind, double x, double y, int qx, int qy, int r)
{
    const TAsse& ax = ind.rifX;
    const TAsse& ay = ind.rifY;
    const double tuttoX = Scarto(x, ax.minimo, ax.minimo + ax.larghezza);
    const double tuttoY = Scarto(y, ay.minimo, ay.minimo + ay.larghezza);
    double minimo = -1.0;
    auto striscia = [&](double lungo, double traverso) {
        const double d = lungo * lungo + traverso * traverso;
        if (minimo < 0.0 || d < minimo) minimo = d;
    };
    if (qx + r + 1 < ax.lati) striscia(Scarto(x, ax.Inizio(qx + r + 1), ax.minimo + ax.larghezza), tuttoY);
    if (qx - r - 1 >= 0) striscia(Scarto(x, ax.minimo, ax.Inizio(qx - r)), tuttoY);
    if (qy + r + 1 < ay.lati) striscia(Scarto(y, ay.Inizio(qy + r + 1), ay.minimo + ay.larghezza), tuttoX);
    if (qy - r - 1 >= 0) striscia(Scarto(y, ay.minimo, ay.Inizio(qy - r)), tuttoX);
    return minimo;
}

}  // namespace

int CellaPiuVicina(const TIndiceCelle& ind, double x, double y)
{
    const int lati = ind.rifX.lati;
    const int qx = ind.rifX.Secchio(static_cast<std::int64_t>(x));
    const int qy = ind.rifY.Secchio(static_cast<std::int64_t>(y));
    double migliore = 1e200;
    int scelta = 0;
    bool trovata = false;
    for (int r = 0; r < lati; ++r) {
        for (int bx = std::max(qx - r, 0); bx <= std::min(qx + r, lati - 1); ++bx) {
            const bool bordoX = bx == qx - r || bx == qx + r;
            for (int by = std::max(qy - r, 0); by <= std::min(qy + r, lati - 1); ++by) {
                if (!bordoX && by != qy - r && by != qy + r) continue;  // inner ring
                const int s = bx * lati + by;
                for (int k = ind.inizioRif[s]; k < ind.inizioRif[s + 1]; ++k) {
                    const int id = ind.celleRif[k];
                    const double d = (ind.cx[id] - x) * (ind.cx[id] - x) + (ind.cy[id] - y) * (ind.cy[id] - y);
                    if (d < migliore || (d == migliore && trovata && id < scelta)) {
                        migliore = d;
                        scelta = id;
                        trovata = true;
                    }
                }
            }
        }
        // Stop once every unvisited reference point is surely farther: the
        // bound is cut by far more than the rounding of any distance.
        const double oltre = MinimoFuoriAnello(ind, x, y, qx, qy, r);
        if (oltre < 0.0) break;
        if (trovata && oltre * (1.0 - 1e-9) > migliore) break;
    }
    return scelta;
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
