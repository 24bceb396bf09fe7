// Whether numbers are all finite: a fit takes no value that is not, and
// gives no map whose coefficients are not.
#ifndef VELMARIN_FINITI_H
#define VELMARIN_FINITI_H

#include <cmath>

inline bool TuttiFiniti(const double* v, int n)
{
    for (int k = 0; k < n; ++k)
        if (!std::isfinite(v[k])) return false;
    return true;
}

#endif
