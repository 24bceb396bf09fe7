// Decoders of the comma-separated text formats: format 2, "SummaGraph.MM
// ASCII", and format 3, "Calcomp 2000 ASCII", which sends the same line with
// its own button codes.
//
// A line is   x , y , button LF   with decimal digits in each field. Only
// digits, commas and LF count; signs, spaces, CR and anything else are
// skipped wherever they stand, so x and y are never negative. The gather
// starts anywhere in the stream, so the bytes up to its first LF are the tail
// of a cut line and are skipped; the next line is the report.
//
// Framing. These tablets send five digits for x and for y and a button code
// of at most 16, so a line is one report only with exactly two commas,
// one to five digits in each coordinate, and a button code of one or two
// digits up to 16, ended by its LF. Anything else is a line that was cut short
// and joined to the next one (the tablet lost bytes, or stopped and went on),
// and is dropped: the decoder goes on with the line behind it. A line that
// the end of the gather cuts has no LF and is not decoded. This departs from
// the original decoders, which took 40 digits a field, skipped a third comma
// and decoded a line that the gather's end cut.
//
// One attempt per full gather: whatever it gives, every gathered byte is
// dropped, those behind the line too.
#include "campo_testo.h"

namespace {

constexpr int cifreCoordinata = 5;  // digits these tablets send for x and for y
constexpr int cifreCodice = 2;      // digits of the button code
constexpr int codiceMassimo = 16;   // a cursor has at most 16 buttons

// Walks the line from `inizio` up to the LF at `fine` into the three fields.
// Returns the commas seen, up to a third one, which is already one too many.
int LeggiRiga(const TDigitLink& link, int inizio, int fine, TCampoDecimale (&campi)[3])
{
    int virgole = 0;
    for (int i = inizio; i < fine; ++i) {
        const std::uint8_t c = link.bufReport[i];
        if (c != ',') campi[virgole].Aggiungi(c);
        else if (++virgole > 2) break;
    }
    return virgole;
}

bool CifreTra(const TCampoDecimale& campo, int massimo) { return campo.Cifre() >= 1 && campo.Cifre() <= massimo; }

// The line from `inizio` to the LF at `fine`, when it is one whole report.
bool RigaIntera(TDigitLink& link, int inizio, int fine)
{
    // One more place than a field may hold, so that a longer one shows.
    TCampoDecimale campi[3] = {TCampoDecimale(cifreCoordinata + 1), TCampoDecimale(cifreCoordinata + 1),
                               TCampoDecimale(cifreCodice + 1)};
    if (LeggiRiga(link, inizio, fine, campi) != 2) return false;
    if (!CifreTra(campi[0], cifreCoordinata) || !CifreTra(campi[1], cifreCoordinata)) return false;
    if (!CifreTra(campi[2], cifreCodice) || campi[2].Valore() > codiceMassimo) return false;
    Scrivi(link.xReport, campi[0].Valore());
    Scrivi(link.yReport, campi[1].Valore());
    Scrivi(link.bottone, campi[2].Valore());
    return true;
}

int TentativoSumma(TDigitLink& link)
{
    int lf = TrovaNelGather(link, carLF, 0);
    while (lf >= 0) {
        const int fine = TrovaNelGather(link, carLF, lf + 1);
        if (fine < 0) return 0;  // no line behind it, or one cut by the gather's end
        if (RigaIntera(link, lf + 1, fine)) return 1;
        lf = fine;  // a cut line: the next one is tried
    }
    return 0;
}

// The button codes of format 3 are bit values for the third and fourth
// button; every other code is the button itself.
std::int32_t BottoneCalcomp2000(std::int32_t codice)
{
    switch (codice) {
    case 4: return 3;
    case 8: return 4;
    default: return codice;
    }
}

}  // namespace

int DecodificaSummaAscii(TDigitLink& link)
{
    if (!GatherChiuso(link)) return 0;
    const int esito = TentativoSumma(link);
    link.numAccum = 0;
    return esito;
}

int DecodificaCalcomp2000(TDigitLink& link)
{
    const int esito = DecodificaSummaAscii(link);
    if (esito == 1) Scrivi(link.bottone, BottoneCalcomp2000(Leggi(link.bottone)));
    return esito;
}
