#include "inquadratura.h"

#include <cstring>

namespace {

struct TFormatoTempo {
    int byteReport;          // bytes of the longest report the tablet sends
    std::uint8_t fineRiga;   // the last byte of every report, 0 where none is fixed
    std::uint8_t capoRiga;   // the byte behind which the decoder reads a line
    bool svuotaIngresso;     // the decoder purges the input queue after its attempt
};

// By format: 1 SummaGraph binary, 2 and 3 "x,y,b" CR LF, 4 OCE "@..." CR LF,
// 5 MicroGrid, 6 Rolley "@b,x,y" CR (wide), 7 Calcomp 9500 CR LF, 8 Numonics.
constexpr TFormatoTempo formati[] = {
    {0, 0, 0, false},
    {5, 0, 0, false},
    {15, 0x0A, 0x0A, false},
    {15, 0x0A, 0x0A, false},
    {17, 0, 0, true},
    {8, 0, 0, false},
    {17, 0x0D, 0x0D, true},
    {16, 0x0A, 0x0D, false},
    {6, 0, 0, false},
};
constexpr int numFormati = sizeof formati / sizeof formati[0];

const TFormatoTempo& Formato(int tipo) { return formati[tipo >= 1 && tipo < numFormati ? tipo : 0]; }

}  // namespace

std::uint32_t BitCarattere(int bitDati, bool parita, int bitStop)
{
    return 1u + (bitDati == 7 ? 7u : 8u) + (parita ? 1u : 0u) + (bitStop == 2 ? 2u : 1u);
}

std::uint32_t PausaLinea(int tipo, std::uint32_t velocita, std::uint32_t bitCarattere)
{
    if (velocita == 0) velocita = 9600;
    const std::uint32_t bit = 3u * static_cast<std::uint32_t>(Formato(tipo).byteReport) * bitCarattere;
    const std::uint32_t ms = (bit * 1000u + velocita - 1) / velocita;
    return ms > pausaMinima ? ms : pausaMinima;
}

bool FineRigaReport(int tipo, int byte)
{
    const std::uint8_t fine = Formato(tipo).fineRiga;
    return fine != 0 && byte == fine;
}

bool SvuotaIngresso(int tipo) { return Formato(tipo).svuotaIngresso; }

int ChiudiPerPausa(TDigitLink& link, bool inizioRiga)
{
    if (link.numAccum <= 0) return 0;
    const std::uint8_t capo = Formato(Leggi(link.tipoReport)).capoRiga;
    if (inizioRiga && capo != 0 && link.numAccum < dimBuffer) {
        std::memmove(link.bufReport + 1, link.bufReport, static_cast<std::size_t>(link.numAccum));
        link.bufReport[0] = capo;
        ++link.numAccum;
    }
    link.chiusoDaPausa = 1;
    link.numLetti = 0;
    const int esito = ProcessaReport(link);
    link.chiusoDaPausa = 0;
    link.numAccum = 0;  // an incomplete tail, or a line the decoder left
    return esito;
}
