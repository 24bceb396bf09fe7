// The reader's rules of time on the line; see raccolta_interrotta.h for the
// rules and why they depart from the original design.
#include "link/raccolta_interrotta.h"

#include "reports/digit_link.h"
#include "reports/inquadratura.h"

TGuardiaRaccolta guardiaRaccolta;

namespace {

void NotaRipresa(TDigitLink& link, std::uint32_t adesso, TGuardiaRaccolta& g)
{
    const std::uint32_t riprese = g.riprese.load(std::memory_order_acquire);
    if (riprese == g.ripreseViste) return;
    g.ripreseViste = riprese;
    link.numAccum = 0;
    g.ultimoLetto = -1;
    g.ultimoArrivo = adesso;
    g.quieta = false;
}

std::uint32_t Pausa(const TDigitLink& link, const TGuardiaRaccolta& g)
{
    return PausaLinea(Leggi(link.tipoReport), g.velocita, g.bitCarattere);
}

}  // namespace

void ImpostaLineaGuardia(std::uint32_t velocita, int bitDati, bool parita, int bitStop, TGuardiaRaccolta& g)
{
    g.velocita = velocita;
    g.bitCarattere = BitCarattere(bitDati, parita, bitStop);
}

void SegnalaRipresa(TGuardiaRaccolta& guardia) { guardia.riprese.fetch_add(1, std::memory_order_release); }

int ProcessaLettura(TDigitLink& link, std::uint32_t adesso, TGuardiaRaccolta& g)
{
    NotaRipresa(link, adesso, g);
    const int tipo = Leggi(link.tipoReport);
    if (link.numAccum == 0) g.inizioRiga = g.quieta || FineRigaReport(tipo, g.ultimoLetto);
    if (link.numLetti > 0) g.ultimoLetto = link.bufLettura[link.numLetti - 1];
    g.ultimoArrivo = adesso;
    g.quieta = false;
    const int esito = ProcessaReport(link);
    if (link.numAccum == 0 && SvuotaIngresso(tipo)) g.ultimoLetto = -1;
    return esito;
}

int ProcessaQuiete(TDigitLink& link, std::uint32_t adesso, TGuardiaRaccolta& g)
{
    NotaRipresa(link, adesso, g);
    if (g.quieta || adesso - g.ultimoArrivo < Pausa(link, g)) return 0;  // unsigned: the clock may wrap
    g.quieta = true;
    return ChiudiPerPausa(link, g.inizioRiga);
}

int AttesaQuiete(const TDigitLink& link, std::uint32_t adesso, const TGuardiaRaccolta& g)
{
    if (g.riprese.load(std::memory_order_acquire) != g.ripreseViste) return 0;
    if (g.quieta) return -1;
    const std::uint32_t trascorso = adesso - g.ultimoArrivo;
    const std::uint32_t pausa = Pausa(link, g);
    return trascorso >= pausa ? 0 : static_cast<int>(pausa - trascorso);
}
