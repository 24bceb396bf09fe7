// The one link record of the process and its zero fill.
#include "digit_link.h"

#include <cstring>

TDigitLink digitLink;

void AzzeraDigitLink(TDigitLink& link)
{
    Scrivi(link.ntfy, nullptr);
    Scrivi(link.lenReport, 0);
    link.numLetti = 0;
    link.numAccum = 0;
    std::memset(link.bufLettura, 0, sizeof link.bufLettura);
    std::memset(link.bufReport, 0, sizeof link.bufReport);
    Scrivi(link.tipoReport, 0);
    Scrivi(link.xReport, 0);
    Scrivi(link.yReport, 0);
    link.xPrec = 0;
    link.yPrec = 0;
    Scrivi(link.bottone, 0);
    Scrivi(link.bottonePremuto, 0);
    link.premuto = 0;
    Scrivi(link.hPorta, 0);
    link.porta = 0;
    link.velocita = 0;
    link.parita = 0;
    link.bitDati = 0;
    link.bitStop = 0;
    link.controlloFlusso = 0;
    link.chiusoDaPausa = 0;
}
