// Decoder of format 6, "Rolley MR2". A line lies between two CRs; with c the
// first CR, the columns are fixed:
//   c+1   status, bits 6..4 = 1 0 0 (byte & 0x70 == 0x40)
//   c+2   button: ' ' none, 'A'..'P' buttons 1..16, anything else rejects
//   c+3   ','
//   wide layout (comma at c+10):   x c+4..c+9,  y c+11..c+16
//   narrow layout (comma at c+9):  x c+4..c+8,  y c+10..c+14
// The wide comma is tested first. In the field columns only digits count, so
// x and y are never negative. The second CR may lie inside the y columns (as
// early as c+14); it counts there as a non-digit, and so does a column behind
// the gathered bytes.
//
// One attempt per full gather, after which the port's input queue is purged
// and the gather dropped, so the next gather starts at whatever the tablet
// sends next.
#include "campo_testo.h"
#include "link/iodev.h"

namespace {

struct TDisposizione {
    int virgola;  // column of the comma between the fields, from c
    int larghezza;  // digit columns of each field
};
constexpr TDisposizione larga{10, 6};
constexpr TDisposizione stretta{9, 5};
constexpr int distanzaMinimaCR = 14;  // the second CR lies at c+14 or later

bool StatoValido(std::uint8_t c) { return (c & 0x70) == 0x40; }

// The button of column c+2; false rejects the line.
bool BottoneRolley(std::uint8_t c, std::int32_t& bottone)
{
    if (c == ' ') bottone = 0;
    else if (c >= 'A' && c <= 'P') bottone = c - 64;
    else return false;
    return true;
}

int TentativoRolley(TDigitLink& link)
{
    const int c = TrovaNelGather(link, carCR, 0);
    if (c < 0 || c + 1 >= NumGather(link)) return 0;
    const int fine = TrovaNelGather(link, carCR, c + 1);
    if (fine < 0 || fine < c + distanzaMinimaCR) return 0;
    if (ByteGather(link, c + 3) != ',' || !StatoValido(ByteGather(link, c + 1))) return 0;

    const TDisposizione* d = nullptr;
    if (ByteGather(link, c + larga.virgola) == ',') d = &larga;
    else if (ByteGather(link, c + stretta.virgola) == ',') d = &stretta;
    else return 0;

    // Six columns of digits at most: no field can pass 32 bits.
    TCampoDecimale x(d->larghezza), y(d->larghezza);
    ColonneNelCampo(link, c + 4, c + d->virgola - 1, x);
    ColonneNelCampo(link, c + d->virgola + 1, c + d->virgola + d->larghezza, y);
    if (x.Cifre() == 0 || y.Cifre() == 0) return 0;
    Scrivi(link.xReport, x.Valore());
    Scrivi(link.yReport, y.Valore());

    // A bad button rejects the line, with x and y already stored.
    std::int32_t bottone = 0;
    if (!BottoneRolley(ByteGather(link, c + 2), bottone)) return 0;
    Scrivi(link.bottone, bottone);
    return 1;
}

}  // namespace

int DecodificaRolley(TDigitLink& link)
{
    if (link.numAccum < LenGather(link)) return 0;
    const int esito = TentativoRolley(link);
    IODevPurgeRx();
    link.numAccum = 0;
    return esito;
}
