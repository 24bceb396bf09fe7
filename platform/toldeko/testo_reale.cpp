#include "testo_reale.h"

#include <cstdio>
#include <cstdlib>

std::string TestoReale(double v)
{
    if (v == 0) v = 0;  // -0 shows as 0
    char testo[40];
    for (int cifre = 1; cifre <= 15; ++cifre) {
        std::snprintf(testo, sizeof testo, "%.*g", cifre, v);
        if (std::strtod(testo, nullptr) == v) return testo;
    }
    // More than fifteen digits is noise of the arithmetic: fifteen, and a
    // value that rounds to zero is zero.
    std::snprintf(testo, sizeof testo, "%.15g", v);
    if (std::strtod(testo, nullptr) == 0) return "0";
    return testo;
}
