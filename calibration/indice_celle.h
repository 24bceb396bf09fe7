// A spatial index of the grid cells, so that the cell search of the map need
// not test every cell of a large grid for every point.
//
// The index never changes which cell serves a point; it only spares the tests
// that cannot succeed:
// - A cell holds a point only if the point lies in the box of its four
//   corners. The one exception is a cell with three corners of one of its
//   triangles at a single position, which holds every point; a grid with such
//   a cell is not indexed.
// - Buckets of a uniform partition of the tablet list, in scan order, the
//   cells whose box meets them, so the first holding cell of a bucket's list
//   is the first holding cell of the whole scan.
// - The nearest reference point is sought ring by ring around the point's
//   bucket, until no unvisited bucket can hold a reference point as near as
//   the best one; equal distances go to the earlier cell, as in the scan.
//
// The storage has a fixed size, taken once at the first fit, so refreshing
// the index allocates nothing and never frees what a reader may hold. A grid
// whose boxes would overflow the storage is not indexed, and the map then
// scans every cell.
#ifndef VELMARIN_INDICE_CELLE_H
#define VELMARIN_INDICE_CELLE_H

#include <cstdint>

#include "digit.h"

constexpr int maxCelle = maxQuadrati * maxQuadrati;
constexpr int maxVociCelle = 16 * maxCelle;  // bucket entries of the cell boxes

// A cell is filed as i · 32 + j, which keeps the scan order (East index
// outermost) and needs no division to be taken apart.
constexpr int bitNord = 5;
constexpr int maxCodiceCella = maxQuadrati << bitNord;
inline int CodiceCella(int i, int j) { return (i << bitNord) | j; }
inline int CellaEst(int codice) { return codice >> bitNord; }
inline int CellaNord(int codice) { return codice & ((1 << bitNord) - 1); }

// A partition of the whole values [minimo, minimo + larghezza) into `lati`
// buckets of nearly equal width. The bucket of a value never decreases as the
// value grows, and `inizio` holds the first value of each bucket.
struct TAsse {
    std::int64_t minimo;
    std::int64_t larghezza;
    int lati;
    double scala;
    std::int64_t inizio[maxQuadrati + 1];

    void Imposta(std::int64_t primo, std::int64_t ultimo, int numLati);
    int Secchio(std::int64_t v) const;  // bucket of v, clamped to the partition
    std::int64_t Inizio(int secchio) const { return inizio[secchio]; }
    std::int64_t Fine() const { return minimo + larghezza; }
};

struct TIndiceCelle {
    bool valido;  // describes the current corner tables and grid size
    int quadEst;
    int quadNord;

    // Boxes of the cells: for each bucket, the cells whose box meets it.
    TAsse boxX, boxY;
    std::int64_t boxMaxX, boxMaxY;
    std::int32_t inizioBox[maxCelle + 1];
    std::int16_t celleBox[maxVociCelle];

    // Reference points (midpoints of the diagonal 0-3), one per cell, filed
    // by the bucket of their whole part.
    TAsse rifX, rifY;
    std::int32_t inizioRif[maxCelle + 1];
    std::int16_t celleRif[maxCelle];
    double boxRif[maxCelle][4];  // per bucket: least and greatest x, then y
    double cx[maxCodiceCella];
    double cy[maxCodiceCella];
};

// Fills the index from the corner tables of a grid of quadEst by quadNord
// cells. Returns false, with valido false, for a grid it does not serve.
bool IndicizzaCelle(TIndiceCelle& indice, int quadEst, int quadNord, std::int32_t*** angX,
                    std::int32_t*** angY);

// The cells (by code), in scan order, that may hold the point; an empty range
// when the point lies outside every cell box.
void CandidatiCella(const TIndiceCelle& indice, std::int32_t x, std::int32_t y,
                    const std::int16_t*& primo, const std::int16_t*& fine);

// Code of the cell with the nearest reference point; the earlier cell on
// equal distances.
int CellaPiuVicina(const TIndiceCelle& indice, double x, double y);

// The reference point of a cell, as the map measures it: the exact sum of the
// corner counts, then halved in double, so a half count survives.
inline double MetaDiagonale(std::int32_t a, std::int32_t b)
{
    return static_cast<double>(static_cast<std::int64_t>(a) + b) * 0.5;
}

#endif
