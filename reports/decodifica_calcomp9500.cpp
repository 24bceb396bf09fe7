// Decoder of format 7, "Calcomp 9500". A line lies between two CRs. Every CR
// and LF in between is removed first, and the characters left are counted
// from 1:
//   1, 2     ignored
//   3        button: '0'..'9' give 1..10, 'A' gives 1, anything else none
//   4..8     x, five columns
//   9..13    y, five columns
//   14 on    ignored
// In the field columns only digits count, so x and y are never negative.
// A line of exactly 12 characters has no character 13; that column counts as
// a non-digit, and y is read from characters 9 to 12.
//
// Framing. The tablet sends 14 characters a line. A line of more than 14 is
// one cut short and joined to the next, and one of fewer than 12 was cut
// short; either is dropped, and the decoder goes on from the CR that ends
// it. This departs from the original decoder, which read any line of 12
// characters or more. A cut of one or two characters in front of a line of
// 12 or 13 stays undetectable: no column tells where a line begins.
//
// One attempt per full gather: whatever it gives, the gather is dropped.
#include "campo_testo.h"

namespace {

constexpr int caratteriUtili = 13;  // characters the columns reach
constexpr int caratteriMinimi = 12;
constexpr int caratteriMassimi = 14;  // what the tablet sends
constexpr int colonneCampo = 5;

// The line's characters without CR and LF: the first caratteriUtili stored,
// all of them counted.
struct TRiga {
    std::uint8_t car[caratteriUtili];
    int quanti = 0;

    void Aggiungi(std::uint8_t c)
    {
        if (c == carCR || c == carLF) return;
        if (quanti < caratteriUtili) car[quanti] = c;
        ++quanti;
    }
    // Character n, counted from 1; 0 when the line is shorter.
    std::uint8_t Carattere(int n) const { return n <= quanti && n <= caratteriUtili ? car[n - 1] : 0; }
};

std::int32_t BottoneCalcomp9500(std::uint8_t c)
{
    if (c >= '0' && c <= '9') return c - 47;
    return c == 'A' ? 1 : 0;
}

void CampoDaRiga(const TRiga& riga, int primo, TCampoDecimale& campo)
{
    for (int n = primo; n < primo + colonneCampo; ++n) campo.Aggiungi(riga.Carattere(n));
}

// A line of a whole line's length, its CR and LF left out.
int LeggiRiga(TDigitLink& link, const TRiga& riga)
{
    TCampoDecimale x(colonneCampo), y(colonneCampo);
    CampoDaRiga(riga, 4, x);
    CampoDaRiga(riga, 9, y);
    if (x.Cifre() == 0 || y.Cifre() == 0) return 0;
    Scrivi(link.xReport, x.Valore());
    Scrivi(link.yReport, y.Valore());
    Scrivi(link.bottone, BottoneCalcomp9500(riga.Carattere(3)));
    return 1;
}

int TentativoCalcomp9500(TDigitLink& link)
{
    int inizio = TrovaNelGather(link, carCR, 0);
    while (inizio >= 0 && inizio + 1 < NumGather(link)) {
        const int fine = TrovaNelGather(link, carCR, inizio + 1);
        if (fine < 0) return 0;
        TRiga riga;
        for (int i = inizio + 1; i < fine; ++i) riga.Aggiungi(link.bufReport[i]);
        if (riga.quanti >= caratteriMinimi && riga.quanti <= caratteriMassimi) return LeggiRiga(link, riga);
        inizio = fine;  // a cut line: the next one begins at its CR
    }
    return 0;
}

}  // namespace

int DecodificaCalcomp9500(TDigitLink& link)
{
    if (!GatherChiuso(link)) return 0;
    const int esito = TentativoCalcomp9500(link);
    link.numAccum = 0;
    return esito;
}
