// The two linear solvers of the calibrations: Gauss-Jordan with full pivoting
// for a square system, and least squares through the normal equations.
//
// A matrix is an array of row pointers; rows are exchanged element by
// element, so the row pointers stay where they are and rows need not be
// contiguous. Neither solver reads or writes a field of the object.
#include "digit.h"

#include <cmath>
#include <vector>

namespace {

// Pivot bookkeeping of one pass (row and column of its pivot) and of one
// index (how many times it served as pivot column).
struct TPivot {
    std::int32_t indxr;
    std::int32_t indxc;
    std::int32_t ipiv;
};

// Scans the unused rows and columns for the first element of largest
// magnitude, strictly greater than any before it. irow and icol keep their
// values when nothing exceeds 0.0. False when a column already served twice.
bool CercaPivot(double** a, int n, const std::vector<TPivot>& p, int& irow, int& icol)
{
    double big = 0.0;
    for (int j = 0; j < n; ++j) {
        if (p[j].ipiv == 1) continue;
        for (int k = 0; k < n; ++k) {
            if (p[k].ipiv > 1) return false;
            if (p[k].ipiv < 1 && std::fabs(a[j][k]) > big) {
                big = std::fabs(a[j][k]);
                irow = j;
                icol = k;
            }
        }
    }
    return true;
}

// Divides the pivot row by the pivot (its place becoming 1.0 first) and
// clears the pivot column from every other row, zero or not.
void Elimina(double** a, std::vector<double>& r, int n, int icol)
{
    const double piv = a[icol][icol];
    a[icol][icol] = 1.0;
    for (int l = 0; l < n; ++l) a[icol][l] /= piv;
    r[icol] /= piv;
    for (int ll = 0; ll < n; ++ll) {
        if (ll == icol) continue;
        const double dum = a[ll][icol];
        a[ll][icol] = 0.0;
        for (int l = 0; l < n; ++l) a[ll][l] -= a[icol][l] * dum;
        r[ll] -= dum * r[icol];
    }
}

}  // namespace

void CDigit::Swap(double& a, double& b) const
{
    const double t = a;
    a = b;
    b = t;
}

// Gauss-Jordan elimination with full pivoting, one right-hand side. a is
// replaced by its inverse, b is only read, x receives the solution.
//
// The pivot is the first element of largest magnitude in row-major order
// among unused rows and columns: a later element of equal magnitude does not
// displace it, and a NaN never becomes a pivot. There is no threshold: a
// singular matrix shows itself only when a column serves twice as pivot.
// When the eligible elements are all exactly 0.0, the pass reuses the previous
// pass's position, and the next scan (or the final check) raises errore.
//
// A first pass that finds nothing above 0.0 has no earlier position to reuse:
// it ends at once with errore true and x not written, like a failed scan.
// A negative n is no system at all and raises errore as well.
void CDigit::SolGausJ(double** a, double* b, double* x, int n, bool& errore)
{
    errore = false;
    if (n < 0) {
        errore = true;
        return;
    }
    std::vector<double> r(b, b + n);
    std::vector<TPivot> p(static_cast<std::size_t>(n), TPivot{0, 0, 0});
    int irow = -1;
    int icol = -1;

    for (int i = 0; i < n; ++i) {
        if (!CercaPivot(a, n, p, irow, icol) || icol < 0) {  // icol < 0: first pass, nothing
            errore = true;
            return;
        }
        ++p[icol].ipiv;
        p[i].indxr = irow;
        p[i].indxc = icol;
        if (irow != icol) {
            for (int l = 0; l < n; ++l) Swap(a[irow][l], a[icol][l]);
            Swap(r[irow], r[icol]);
        }
        Elimina(a, r, n, icol);
    }

    for (int l = n - 1; l >= 0; --l) {
        if (p[l].indxr == p[l].indxc) continue;
        for (int k = 0; k < n; ++k) Swap(a[k][p[l].indxr], a[k][p[l].indxc]);
    }

    for (int i = 0; i < n; ++i) {
        if (p[i].ipiv != 1) {
            errore = true;
            break;
        }
    }
    // Written even when the check failed: the caller goes by errore.
    for (int i = 0; i < n; ++i) x[i] = r[i];
}

// Least squares for an m by n system through the raw normal equations
// N = AᵀA, c = Aᵀb, with no scaling and no centring; every element of N is
// computed, symmetry is not used. a and b are only read.
void CDigit::LeastSqareMatrix(double** a, const double* b, double* x, int m, int n, bool& errore)
{
    if (m < 0 || n < 0) {
        errore = true;
        return;
    }
    std::vector<double> valori(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
    std::vector<double*> normale(static_cast<std::size_t>(n));
    std::vector<double> c(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) normale[i] = valori.data() + static_cast<std::size_t>(i) * n;

    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            normale[i][j] = 0.0;
            for (int k = 0; k < m; ++k) normale[i][j] += a[k][i] * a[k][j];
        }
    }
    for (int i = 0; i < n; ++i) {
        c[i] = 0.0;
        for (int k = 0; k < m; ++k) c[i] += a[k][i] * b[k];
    }
    SolGausJ(normale.data(), c.data(), x, n, errore);
}
