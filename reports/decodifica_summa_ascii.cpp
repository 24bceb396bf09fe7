// Decoders of the comma-separated text formats: format 2, "SummaGraph.MM
// ASCII", and format 3, "Calcomp 2000 ASCII", which sends the same line with
// its own button codes.
//
// A line is   x , y , button LF   with decimal digits in each field. Only
// digits, commas and LF count; signs, spaces, CR and anything else are
// skipped wherever they stand, so x and y are never negative. The gather
// starts anywhere in the stream, so the bytes up to its first LF are the tail
// of a cut line and are skipped; the next line is the report, and the end of
// the gather ends it as well as an LF does.
//
// One attempt per full gather: whatever it gives, every gathered byte is
// dropped, those behind the line too.
#include "campo_testo.h"

namespace {

constexpr int cifreCampo = 40;  // digits a field stores; further ones are skipped

// Walks the line that begins at `inizio` into the three fields. Returns the
// commas seen, at most two: a third or later comma is skipped, and its
// digits run on in the button field.
int LeggiRiga(const TDigitLink& link, int inizio, TCampoDecimale (&campi)[3])
{
    int virgole = 0;
    for (int i = inizio; i < NumGather(link); ++i) {
        const std::uint8_t c = link.bufReport[i];
        if (c == carLF) break;
        if (c == ',') {
            if (virgole < 2) ++virgole;
        } else {
            campi[virgole].Aggiungi(c);
        }
    }
    return virgole;
}

int TentativoSumma(TDigitLink& link)
{
    const int lf = TrovaNelGather(link, carLF, 0);
    if (lf < 0 || lf + 1 >= NumGather(link)) return 0;

    TCampoDecimale campi[3] = {TCampoDecimale(cifreCampo), TCampoDecimale(cifreCampo),
                               TCampoDecimale(cifreCampo)};
    if (LeggiRiga(link, lf + 1, campi) != 2) return 0;
    Scrivi(link.xReport, campi[0].Valore());
    Scrivi(link.yReport, campi[1].Valore());
    Scrivi(link.bottone, campi[2].Valore());
    return 1;
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
    if (link.numAccum < LenGather(link)) return 0;
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
