#include "codifica_report.h"

#include <cstdio>
#include <cstdlib>

namespace {

std::string Summa(std::int32_t x, std::int32_t y, int bottone)
{
    const std::uint32_t mx = static_cast<std::uint32_t>(std::labs(x)) & 0x3FFF;
    const std::uint32_t my = static_cast<std::uint32_t>(std::labs(y)) & 0x3FFF;
    std::string r(5, '\0');
    r[0] = static_cast<char>(0x80 | (x >= 0 ? 0x10 : 0) | (y >= 0 ? 0x08 : 0) | (bottone & 0x07));
    r[1] = static_cast<char>(mx & 0x7F);
    r[2] = static_cast<char>(mx >> 7);
    r[3] = static_cast<char>(my & 0x7F);
    r[4] = static_cast<char>(my >> 7);
    return r;
}

std::string MicroGrid(std::int32_t x, std::int32_t y, int bottone)
{
    std::string r(8, '\0');
    r[0] = '@';
    r[1] = static_cast<char>(bottone & 0x1F);
    r[2] = static_cast<char>(x & 0x3F);
    r[3] = static_cast<char>((x >> 6) & 0x3F);
    r[4] = static_cast<char>((x >> 12) & 0x1F);
    r[5] = static_cast<char>(y & 0x3F);
    r[6] = static_cast<char>((y >> 6) & 0x3F);
    r[7] = static_cast<char>((y >> 12) & 0x1F);
    return r;
}

std::string Numonics(std::int32_t x, std::int32_t y, int bottone)
{
    static const unsigned char schema[] = {0x00, 0x44, 0x48, 0x50, 0x60};
    const unsigned char b = (bottone >= 1 && bottone <= 4) ? schema[bottone] : 0x00;
    std::string r(6, '\0');
    r[0] = static_cast<char>(0x80 | b | ((x >> 14) & 0x03));
    r[1] = static_cast<char>((x >> 7) & 0x7F);
    r[2] = static_cast<char>(x & 0x7F);
    r[3] = static_cast<char>((y >> 14) & 0x03);
    r[4] = static_cast<char>((y >> 7) & 0x7F);
    r[5] = static_cast<char>(y & 0x7F);
    return r;
}

std::int32_t Limita(std::int32_t v, std::int32_t massimo)
{
    return v < 0 ? 0 : (v > massimo ? massimo : v);
}

// The button character of the models that send one per button: the first
// button is '0', the tenth '9', then 'A' to 'F' for the eleventh to the
// sixteenth. The decoders read 'A'.. as 1.., so only buttons 1 to 10 come
// back unchanged.
char CarattereEsadecimale(int bottone)
{
    return "0123456789ABCDEF"[(bottone - 1) & 0x0F];
}

std::string Formatta(const char* formato, std::int32_t a, std::int32_t b, int c)
{
    char riga[64];
    const int n = std::snprintf(riga, sizeof riga, formato, a, b, c);
    if (n <= 0) return {};
    const std::size_t scritti = static_cast<std::size_t>(n);
    return std::string(riga, scritti < sizeof riga ? scritti : sizeof riga - 1);
}

// Format 2: "xxxxx,yyyyy,b" and CR LF, five digits a coordinate.
std::string SummaAscii(std::int32_t x, std::int32_t y, int bottone)
{
    return Formatta("%05d,%05d,%d\r\n", Limita(x, 99999), Limita(y, 99999), bottone < 0 ? 0 : bottone);
}

// Format 3: the same line; the third and fourth buttons send their bit
// values 4 and 8.
std::string Calcomp2000(std::int32_t x, std::int32_t y, int bottone)
{
    const int codice = bottone == 3 ? 4 : (bottone == 4 ? 8 : bottone);
    return SummaAscii(x, y, codice);
}

// Format 4: '@', 'D' and the button character while a button is down, else
// "U0"; then signed x and y of at least five digits; CR LF.
std::string Oce(std::int32_t x, std::int32_t y, int bottone)
{
    const bool giu = bottone >= 1;
    std::string r = "@";
    r += giu ? 'D' : 'U';
    r += giu ? CarattereEsadecimale(bottone) : '0';
    return r + Formatta("%+06d%+06d\r\n", x, y, 0);
}

// Format 7: two status characters, the button character (a space for
// none), five digits of x and of y, a trailing status character, CR LF. The
// status characters are ignored by the decoder; the simulated tablet sends
// "AB" and '0'.
std::string Calcomp9500(std::int32_t x, std::int32_t y, int bottone)
{
    std::string r = "AB";
    r += bottone >= 1 ? CarattereEsadecimale(bottone) : ' ';
    return r + Formatta("%05d%05d0\r\n", Limita(x, 99999), Limita(y, 99999), 0);
}

}  // namespace

std::string CodificaRolley(std::int32_t x, std::int32_t y, int bottone, bool larga)
{
    const std::int32_t massimo = larga ? 999999 : 99999;
    std::string r = "@";
    r += (bottone >= 1 && bottone <= 16) ? static_cast<char>('A' + bottone - 1) : ' ';
    const char* formato = larga ? ",%06d,%06d\r" : ",%05d,%05d\r";
    return r + Formatta(formato, Limita(x, massimo), Limita(y, massimo), 0);
}

std::string CodificaReport(int tipo, std::int32_t x, std::int32_t y, int bottone)
{
    switch (tipo) {
    case 1: return Summa(x, y, bottone);
    case 2: return SummaAscii(x, y, bottone);
    case 3: return Calcomp2000(x, y, bottone);
    case 4: return Oce(x, y, bottone);
    case 6: return CodificaRolley(x, y, bottone, x > 99999 || y > 99999);
    case 7: return Calcomp9500(x, y, bottone);
    case 5: return MicroGrid(x, y, bottone);
    case 8: return Numonics(x, y, bottone);
    default: return {};
    }
}
