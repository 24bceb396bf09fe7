// Decoder of format 6, "Rolley MR2". A line lies between two CRs; with c the
// first CR, the columns are fixed:
//   c+1   status, bits 6..4 = 1 0 0 (byte & 0x70 == 0x40)
//   c+2   button: ' ' none, 'A'..'P' buttons 1..16, anything else rejects
//   c+3   ','
//   wide layout (comma at c+10):   x c+4..c+9,  y c+11..c+16
//   narrow layout (comma at c+9):  x c+4..c+8,  y c+10..c+14
// The wide comma is tested first. In the field columns only digits count, so
// x and y are never negative.
//
// Framing. The tablet's lines are all of one length: the second CR stands at
// c+15 (narrow) or c+17 (wide), and the layout must be the one of its
// length. A CR anywhere else ends a line that was cut short, or joined to
// the next one; such a line is dropped, and the decoder goes on from the CR
// that ends it. This departs from the original decoder, which took a second
// CR at c+14 inside the y columns (four digits of y) and any line longer.
//
// One attempt per full gather, after which the port's input queue is purged
// and the gather dropped, so the next gather starts at whatever the tablet
// sends next.
#include "campo_testo.h"
#include "link/iodev.h"

namespace {

struct TDisposizione {
    int virgola;    // column of the comma between the fields, from c
    int larghezza;  // digit columns of each field
    int fine;       // column of the CR that ends the line
};
constexpr TDisposizione larga{10, 6, 17};
constexpr TDisposizione stretta{9, 5, 15};

bool StatoValido(std::uint8_t c) { return (c & 0x70) == 0x40; }

// The button of column c+2; false rejects the line.
bool BottoneRolley(std::uint8_t c, std::int32_t& bottone)
{
    if (c == ' ') bottone = 0;
    else if (c >= 'A' && c <= 'P') bottone = c - 64;
    else return false;
    return true;
}

// The line between the CRs at c and at `fine`, of the length of a layout.
int LeggiLinea(TDigitLink& link, int c, int fine)
{
    if (ByteGather(link, c + 3) != ',' || !StatoValido(ByteGather(link, c + 1))) return 0;

    const TDisposizione* d = nullptr;
    if (ByteGather(link, c + larga.virgola) == ',') d = &larga;
    else if (ByteGather(link, c + stretta.virgola) == ',') d = &stretta;
    if (!d || fine != c + d->fine) return 0;

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

int TentativoRolley(TDigitLink& link)
{
    int c = TrovaNelGather(link, carCR, 0);
    while (c >= 0 && c + 1 < NumGather(link)) {
        const int fine = TrovaNelGather(link, carCR, c + 1);
        if (fine < 0) return 0;
        if (fine == c + stretta.fine || fine == c + larga.fine) return LeggiLinea(link, c, fine);
        c = fine;  // a cut line: the next one begins at its CR
    }
    return 0;
}

}  // namespace

int DecodificaRolley(TDigitLink& link)
{
    if (!GatherChiuso(link)) return 0;
    const int esito = TentativoRolley(link);
    IODevPurgeRx();
    link.numAccum = 0;
    return esito;
}
