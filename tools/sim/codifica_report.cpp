#include "codifica_report.h"

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

}  // namespace

std::string CodificaReport(int tipo, std::int32_t x, std::int32_t y, int bottone)
{
    switch (tipo) {
    case 1: return Summa(x, y, bottone);
    case 5: return MicroGrid(x, y, bottone);
    case 8: return Numonics(x, y, bottone);
    default: return {};
    }
}
