// ProcessaReport: gather, decode, and turn levels into edges.
//
// The tablet repeats its state in every report, so a held button arrives again
// and again. The latch `premuto` announces a press once, with the position of
// the first report that carries it; moves are announced only when the position
// differs from the last decoded report and no button is down. There is no
// release notification.
#include <cstring>

#include "digit_link.h"

namespace {

using TDecodifica = int (*)(TDigitLink&);

// Indexed by report format; format 0 has no decoder.
constexpr TDecodifica decodificatori[] = {
    nullptr,
    DecodificaSummaBin,
    DecodificaSummaAscii,
    DecodificaCalcomp2000,
    DecodificaOce,
    DecodificaMicroGrid,
    DecodificaRolley,
    DecodificaCalcomp9500,
    DecodificaNumonics,
};
constexpr int numFormati = sizeof decodificatori / sizeof decodificatori[0];

void Raccogli(TDigitLink& link)
{
    const std::int32_t len = LenGather(link);
    if (link.numLetti + link.numAccum > len) link.numLetti = len - link.numAccum;
    if (link.numLetti > 0) {
        std::memcpy(link.bufReport + link.numAccum, link.bufLettura, link.numLetti);
        link.numAccum += link.numLetti;
    }
}

void ApplicaFronte(TDigitLink& link)
{
    const std::int32_t x = Leggi(link.xReport);
    const std::int32_t y = Leggi(link.yReport);
    const std::int32_t bottone = Leggi(link.bottone);
    // Loaded once, so that the value tested is the value called; acquired, as
    // the host releases a target it may have made just now.
    CDigitNtfy* const ntfy = link.ntfy.load(std::memory_order_acquire);
    if (bottone >= 1) {
        if (link.premuto == 0) {
            link.premuto = 1;
            Scrivi(link.bottonePremuto, bottone);
            if (ntfy) ntfy->NotifyButton(bottone, x, y);
        }
        return;
    }
    link.premuto = 0;
    if ((x != link.xPrec || y != link.yPrec) && ntfy) ntfy->NotifyMove(x, y);
}

}  // namespace

int ProcessaReport(TDigitLink& link)
{
    Raccogli(link);
    Scrivi(link.bottonePremuto, -1);
    Scrivi(link.bottone, -1);
    Scrivi(link.yReport, -1);
    Scrivi(link.xReport, -1);

    const int formato = Leggi(link.tipoReport);
    if (formato < 1 || formato >= numFormati) return 0;
    const int esito = decodificatori[formato](link);
    if (esito == 0) return 0;

    ApplicaFronte(link);
    link.xPrec = Leggi(link.xReport);
    link.yPrec = Leggi(link.yReport);
    return esito;
}
