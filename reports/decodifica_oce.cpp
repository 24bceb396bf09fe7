// Decoder of format 4, "OCE G 6830", the one polled format: the tablet sends
// one line for each poll "?\r\n", and every complete line, good or bad, is
// answered with the next poll. There is no timer behind the chain: a reply
// that goes missing stops it until the host sets a target again, which sends
// a fresh poll.
//
// A line runs from '@' to LF:
//   column 0   '@'
//   column 1   'D' when a button is down, anything else for none
//   column 2   button character: '0'..'9' give 1..10, 'A'..'F' give 1..6
//   column 3+  sign and digits of x, then sign and digits of y; the first
//              sign opens x, the second y, later signs do nothing; digits
//              before the first sign and any other character are skipped.
//
// No length threshold: a line is decoded as soon as its LF has arrived, and
// an unfinished line stays in the gather for the next read.
//
// Framing. Every line begins with '@', and no other column holds one, so an
// '@' before the LF begins the next line: the line under way was cut short
// and is dropped, and the line is read from that '@'. A line is one report
// only with exactly two signs, one to ten digits behind each (a 32-bit count
// has no more) and, with a button down, a button character of the table;
// any other line was cut and joined, and is not decoded. This departs from
// the original decoder, which read on across an '@', let signs after the
// second pass and took 'D' with any character as no button.
#include "campo_testo.h"
#include "link/iodev.h"

namespace {

constexpr int dimRiga = 40;           // the line store; lenReport 40 bounds a line
constexpr int caratteriCampo = 39;    // characters of a coordinate, sign included
constexpr int cifreMassime = 10;      // digits of a 32-bit count
constexpr char richiesta[] = "?\r\n";  // the poll

struct TRiga {
    std::uint8_t car[dimRiga];
    int lunghezza = 0;  // bytes from '@' to LF, both included; may pass dimRiga
};

// Finds the first complete line of the gather, from its last '@'. A line
// longer than the store (only a gather longer than the model's 40 bytes can
// hold one) keeps its first dimRiga bytes, and its LF still ends it. False
// while the LF has not arrived.
bool TrovaRiga(const TDigitLink& link, TRiga& riga)
{
    const int chiocciola = TrovaNelGather(link, '@', 0);
    if (chiocciola < 0) return false;
    for (int i = chiocciola; i < NumGather(link); ++i) {
        const std::uint8_t c = link.bufReport[i];
        if (c == '@') riga.lunghezza = 0;  // the line under way was cut
        if (riga.lunghezza < dimRiga) riga.car[riga.lunghezza] = c;
        ++riga.lunghezza;
        if (c == carLF) return true;
    }
    return false;
}

// The button of column 2 while a button is down; 0 for a character that no
// button sends.
std::int32_t BottoneOce(std::uint8_t c)
{
    if (c >= '0' && c <= '9') return c - 47;
    if (c >= 'A' && c <= 'F') return c - 64;
    return 0;
}

bool CifreAmmesse(const TCampoDecimale& campo) { return campo.Cifre() >= 1 && campo.Cifre() <= cifreMassime; }

int LeggiRiga(const TRiga& riga, TDigitLink& link)
{
    if (riga.lunghezza <= 3) return 0;
    TCampoDecimale x(caratteriCampo), y(caratteriCampo);
    int segni = 0;
    const int fine = riga.lunghezza < dimRiga ? riga.lunghezza : dimRiga;
    for (int i = 3; i < fine; ++i) {
        const std::uint8_t c = riga.car[i];
        if (c == '+' || c == '-') {
            ++segni;
            if (segni == 1) x.Segno(c);
            if (segni == 2) y.Segno(c);
        } else if (segni == 1) {
            x.Aggiungi(c);
        } else if (segni >= 2) {
            y.Aggiungi(c);
        }
    }
    if (segni != 2 || !CifreAmmesse(x) || !CifreAmmesse(y)) return 0;
    const std::int32_t bottone = riga.car[1] == 'D' ? BottoneOce(riga.car[2]) : 0;
    if (riga.car[1] == 'D' && bottone == 0) return 0;
    Scrivi(link.xReport, x.Valore());
    Scrivi(link.yReport, y.Valore());
    Scrivi(link.bottone, bottone);
    return 1;
}

// Ends the exchange of one line: both queues purged, the gather dropped, the
// next poll sent (IODevWrite sends nothing while delivery is held).
void ChiudiScambio(TDigitLink& link)
{
    IODevPurgeTx();
    IODevPurgeRx();
    link.numAccum = 0;
    IODevWrite(richiesta, sizeof richiesta - 1);
}

}  // namespace

int DecodificaOce(TDigitLink& link)
{
    if (link.numAccum <= 0) return 0;
    TRiga riga;
    if (!TrovaRiga(link, riga)) {
        // A full gather with no complete line can never complete one: the
        // gather takes no further byte. It is closed like a line that did not
        // parse, with its purge and the next poll, so the chain goes on; so
        // is a line cut short by a quiet line, a reply that came in part.
        if (GatherChiuso(link)) ChiudiScambio(link);
        return 0;
    }
    const int esito = LeggiRiga(riga, link);
    ChiudiScambio(link);
    return esito;
}
