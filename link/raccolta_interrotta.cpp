// The drop of a gather cut short; see raccolta_interrotta.h for the rule and
// why it departs from the original design.
#include "link/raccolta_interrotta.h"

#include "reports/digit_link.h"

TGuardiaRaccolta guardiaRaccolta;

void SegnalaRipresa(TGuardiaRaccolta& guardia) { guardia.riprese.fetch_add(1, std::memory_order_release); }

int ProcessaLettura(TDigitLink& link, std::uint32_t adesso, TGuardiaRaccolta& guardia)
{
    const std::uint32_t riprese = guardia.riprese.load(std::memory_order_acquire);
    const bool ripreso = riprese != guardia.ripreseViste;
    const bool stantio = adesso - guardia.ultimoByte > pausaRaccolta;  // unsigned: the tick may wrap
    if (ripreso || stantio) link.numAccum = 0;
    guardia.ripreseViste = riprese;
    guardia.ultimoByte = adesso;
    return ProcessaReport(link);
}
