// Fuzz target of the report path, one build per report format (FORMATO). The
// input scripts the reader: a control byte (low six bits: the chunk's size
// 1..64; bit 7: the next byte is a new report length, as a host switching
// models), then the chunk. A notification the format cannot carry aborts.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "reports/digit_link.h"

#ifndef FORMATO
#error "FORMATO names the report format under test"
#endif

namespace {

struct TLimiti {
    std::int32_t minXY, maxXY, maxBottone;
};

constexpr TLimiti limiti[] = {
    {0, 0, 0},
    {-16512, 16512, 7},          // 1: signed 7-bit bytes, sign bits
    {0, INT32_MAX, INT32_MAX},   // 2: digits only, never negative
    {0, INT32_MAX, INT32_MAX},   // 3: as 2, button mapped
    {INT32_MIN, INT32_MAX, 10},  // 4: signed fields, button 1..10
    {0, 131071, 31},             // 5: 17-bit fields
    {0, 999999, 16},             // 6: at most six digit columns
    {0, 99999, 10},              // 7: five digit columns
    {0, 65535, 4},               // 8: 16-bit fields
};
constexpr TLimiti lim = limiti[FORMATO];
constexpr std::int32_t lenModello = (FORMATO == 1 || FORMATO == 8) ? 15 : FORMATO == 5 ? 20 : 40;

void Verifica(bool condizione)
{
    if (!condizione) std::abort();
}

class TControllore : public CDigitNtfy {
public:
    void NotifyMove(std::int32_t x, std::int32_t y) override
    {
        Verifica(x >= lim.minXY && x <= lim.maxXY && y >= lim.minXY && y <= lim.maxXY);
    }
    void NotifyButton(std::int32_t b, std::int32_t x, std::int32_t y) override
    {
        Verifica(b >= 1 && b <= lim.maxBottone);
        NotifyMove(x, y);
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n)
{
    static TControllore controllore;
    AzzeraDigitLink(digitLink);
    Scrivi(digitLink.tipoReport, FORMATO);
    Scrivi(digitLink.lenReport, lenModello);
    Scrivi(digitLink.ntfy, &controllore);

    std::size_t pos = 0;
    while (pos < n) {
        const std::uint8_t controllo = dati[pos++];
        if ((controllo & 0x80) && pos < n) {
            const std::uint8_t b = dati[pos++];
            Scrivi(digitLink.lenReport, b < 128 ? lenModello : b & 0x7F);  // 0..127, also below a report's size
        }
        const std::size_t pezzo = std::min<std::size_t>((controllo & 0x3F) + 1u, n - pos);
        if (pezzo == 0) break;
        std::memcpy(digitLink.bufLettura, dati + pos, pezzo);
        pos += pezzo;
        digitLink.numLetti = static_cast<std::int32_t>(pezzo);
        ProcessaReport(digitLink);
        Verifica(digitLink.numAccum >= 0 && digitLink.numAccum <= dimBuffer);
    }
    return 0;
}
