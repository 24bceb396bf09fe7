#include "testo_reale.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// The value with `cifre` significant digits: plainly written, trailing zeros
// dropped, unless it is too large or too small for that to read well.
std::string ConCifre(double v, int cifre)
{
    char testo[400];
    std::snprintf(testo, sizeof testo, "%.*e", cifre - 1, v);
    const int esponente = std::atoi(std::strchr(testo, 'e') + 1);
    if (esponente < -4 || esponente >= 15) {
        std::snprintf(testo, sizeof testo, "%.*g", cifre, v);
        return testo;
    }
    const int decimali = cifre - 1 - esponente > 0 ? cifre - 1 - esponente : 0;
    std::snprintf(testo, sizeof testo, "%.*f", decimali, v);
    std::string s = testo;
    if (s.find('.') != std::string::npos) {
        s.erase(s.find_last_not_of('0') + 1);
        if (s.back() == '.') s.pop_back();
    }
    return s;
}

}  // namespace

std::string TestoReale(double v)
{
    if (v == 0) return "0";  // -0 as well
    // More than fifteen digits is noise of the arithmetic: fifteen then.
    for (int cifre = 1; cifre < 15; ++cifre) {
        const std::string s = ConCifre(v, cifre);
        if (std::strtod(s.c_str(), nullptr) == v) return s;
    }
    const std::string s = ConCifre(v, 15);
    return s == "-0" ? "0" : s;
}
