#include "lettura_numeri.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>

double LeggiReale(const char* testo)
{
    if (!testo || !*testo) return valoreAssente;
    return std::atof(testo);
}

bool IsRealeAccettabile(double valore) { return std::isfinite(valore) && valore < valoreAssente; }

std::int32_t LeggiIntero(const char* testo)
{
    if (!testo || !*testo) return -1;
    // The reading of atoi: blanks, a sign, digits up to the first other character.
    const char* p = testo;
    while (std::isspace(static_cast<unsigned char>(*p))) ++p;
    const bool negativo = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    const std::int64_t limite = negativo ? -static_cast<std::int64_t>(std::numeric_limits<std::int32_t>::min())
                                         : std::numeric_limits<std::int32_t>::max();
    std::int64_t valore = 0;
    for (; std::isdigit(static_cast<unsigned char>(*p)); ++p) {
        valore = valore * 10 + (*p - '0');
        if (valore > limite) {
            valore = limite;
            break;
        }
    }
    return static_cast<std::int32_t>(negativo ? -valore : valore);
}
