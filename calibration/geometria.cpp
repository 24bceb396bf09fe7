// The geometry that decides whether a grid cell holds a tablet point: the
// three-way orientation test, the triangle test and the cell test.
#include "digit.h"

#include <cstdint>

namespace {

// Differences of 32-bit counts are below 2^32 in size, so their products are
// below 2^64 and fit an unsigned 64-bit magnitude with a sign beside it; a sum
// of two squares takes one bit more, kept as a carry. Exact on every target,
// 32-bit ones included, with no wider integer type.
struct TProdotto {
    int segno;  // -1, 0, +1
    std::uint64_t modulo;
};

std::uint64_t Modulo(std::int64_t v) { return v < 0 ? 0 - static_cast<std::uint64_t>(v) : static_cast<std::uint64_t>(v); }
int Segno(std::int64_t v) { return (v > 0) - (v < 0); }

TProdotto Prodotto(std::int64_t a, std::int64_t b) { return {Segno(a) * Segno(b), Modulo(a) * Modulo(b)}; }

// -1, 0, +1 as p is less than, equal to or greater than q.
int Confronta(const TProdotto& p, const TProdotto& q)
{
    if (p.segno != q.segno) return p.segno < q.segno ? -1 : +1;
    if (p.modulo == q.modulo) return 0;
    return (p.modulo < q.modulo ? -1 : +1) * (p.segno < 0 ? -1 : +1);
}

// a^2 + b^2 compared with c^2 + d^2.
int ConfrontaQuadrati(std::int64_t a, std::int64_t b, std::int64_t c, std::int64_t d)
{
    const std::uint64_t s1 = Modulo(a) * Modulo(a) + Modulo(b) * Modulo(b);
    const std::uint64_t s2 = Modulo(c) * Modulo(c) + Modulo(d) * Modulo(d);
    const bool riporto1 = s1 < Modulo(a) * Modulo(a), riporto2 = s2 < Modulo(c) * Modulo(c);
    if (riporto1 != riporto2) return riporto1 ? +1 : -1;
    return (s1 > s2) - (s1 < s2);
}

// Orientation in exact arithmetic, for the counts whose 32-bit differences,
// products or sums would overflow.
int CcwEsatto(std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1, std::int32_t x2,
              std::int32_t y2)
{
    const std::int64_t dx1 = static_cast<std::int64_t>(x1) - x0;
    const std::int64_t dy1 = static_cast<std::int64_t>(y1) - y0;
    const std::int64_t dx2 = static_cast<std::int64_t>(x2) - x0;
    const std::int64_t dy2 = static_cast<std::int64_t>(y2) - y0;
    const int lato = Confronta(Prodotto(dx1, dy2), Prodotto(dx2, dy1));
    if (lato != 0) return lato;
    if (Segno(dx1) * Segno(dx2) < 0 || Segno(dy1) * Segno(dy2) < 0) return -1;
    if (ConfrontaQuadrati(dx1, dy1, dx2, dy2) < 0) return +1;
    return 0;
}

}  // namespace

// Where does (x2, y2) lie against the ray from (x0, y0) through (x1, y1)?
// +1 to its left, -1 to its right; on the line: -1 behind the first point,
// +1 beyond the second, 0 on the segment between them, both ends included.
//
// Computed in 32-bit integers, with no floating step. Tablet counts of
// ordinary size never overflow here; for counts that would, the orientation
// is computed exactly instead, so the answer is always the geometric one.
int CDigit::Ccw(std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1, std::int32_t x2,
                std::int32_t y2) const
{
    std::int32_t dx1, dy1, dx2, dy2, p, q;
    if (__builtin_sub_overflow(x1, x0, &dx1) || __builtin_sub_overflow(y1, y0, &dy1) ||
        __builtin_sub_overflow(x2, x0, &dx2) || __builtin_sub_overflow(y2, y0, &dy2) ||
        __builtin_mul_overflow(dx1, dy2, &p) || __builtin_mul_overflow(dx2, dy1, &q))
        return CcwEsatto(x0, y0, x1, y1, x2, y2);
    if (p > q) return +1;
    if (p < q) return -1;

    std::int32_t sx, sy, l1x, l1y, l2x, l2y, l1, l2;
    if (__builtin_mul_overflow(dx1, dx2, &sx) || __builtin_mul_overflow(dy1, dy2, &sy))
        return CcwEsatto(x0, y0, x1, y1, x2, y2);
    if (sx < 0 || sy < 0) return -1;
    if (__builtin_mul_overflow(dx1, dx1, &l1x) || __builtin_mul_overflow(dy1, dy1, &l1y) ||
        __builtin_mul_overflow(dx2, dx2, &l2x) || __builtin_mul_overflow(dy2, dy2, &l2y) ||
        __builtin_add_overflow(l1x, l1y, &l1) || __builtin_add_overflow(l2x, l2y, &l2))
        return CcwEsatto(x0, y0, x1, y1, x2, y2);
    if (l1 < l2) return +1;
    return 0;
}

// The point is inside when no edge, taken in the order first to second,
// second to third, third to first, has it on its right. So only a triangle
// whose vertices run counter-clockwise holds points, edges and vertices
// included; a triangle with its three vertices at one position holds every
// point.
bool CDigit::PtInTri(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
                     std::int32_t x3, std::int32_t y3, std::int32_t px, std::int32_t py) const
{
    if (Ccw(x1, y1, x2, y2, px, py) < 0) return false;
    if (Ccw(x2, y2, x3, y3, px, py) < 0) return false;
    return Ccw(x3, y3, x1, y1, px, py) >= 0;
}

// A cell is split along its diagonal from corner 1 to corner 2 into the
// triangles 0-2-1 and 2-3-1, tried in that order; its corners need not form a
// rectangle.
bool CDigit::PtInRect(const std::int32_t* xs, const std::int32_t* ys, std::int32_t x,
                      std::int32_t y) const
{
    return PtInTri(xs[0], ys[0], xs[2], ys[2], xs[1], ys[1], x, y) ||
           PtInTri(xs[2], ys[2], xs[3], ys[3], xs[1], ys[1], x, y);
}
