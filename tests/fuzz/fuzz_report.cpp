// Fuzz target of the report path, one build per report format (FORMATO).
//
// The input is a script for the reader thread: a control byte, then a chunk of
// line bytes. The control byte's low six bits give the chunk's size (1..64);
// with bit 7 set the next byte picks a new report length (the gather's length
// can change under the reader when the host picks another model). Every
// notification is checked against what the format can carry; a violation
// aborts. Formats 4 and 6 call the port operations, which with no port record
// must do nothing.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "reports/digit_link.h"

#ifndef FORMATO
#error "FORMATO names the report format under test"
#endif

namespace {

struct TLimiti {
    std::int32_t minXY, maxXY;
    std::int32_t maxBottone;
};

// What each format can produce; text formats carry decimal fields.
constexpr TLimiti limiti[] = {
    {0, 0, 0},
    {-16512, 16512, 7},           // 1: signed 7-bit bytes, sign bits
    {0, INT32_MAX, INT32_MAX},    // 2: digits only, never negative
    {0, INT32_MAX, INT32_MAX},    // 3: as 2, button mapped
    {INT32_MIN, INT32_MAX, 10},   // 4: signed fields, button 1..10
    {0, 131071, 31},              // 5: 17-bit fields
    {0, 999999, 16},              // 6: at most six digit columns
    {0, 99999, 10},               // 7: five digit columns
    {0, 65535, 4},                // 8: 16-bit fields
};
constexpr TLimiti lim = limiti[FORMATO];
constexpr std::int32_t lenModello = (FORMATO == 1 || FORMATO == 8) ? 15 : FORMATO == 5 ? 20 : 40;

void Verifica(bool condizione)
{
    if (!condizione) std::abort();
}

class TControllore : public CDigitNtfy {
public:
    void NotifyMove(std::int32_t x, std::int32_t y) override { Posizione(x, y); }
    void NotifyButton(std::int32_t b, std::int32_t x, std::int32_t y) override
    {
        Verifica(b >= 1 && b <= lim.maxBottone);
        Posizione(x, y);
    }

private:
    static void Posizione(std::int32_t x, std::int32_t y)
    {
        Verifica(x >= lim.minXY && x <= lim.maxXY);
        Verifica(y >= lim.minXY && y <= lim.maxXY);
    }
};

std::int32_t NuovaLunghezza(std::uint8_t b)
{
    if (b < 128) return lenModello;
    return b & 0x7F;  // 0..127, also below a report's size
}

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
        if ((controllo & 0x80) && pos < n) Scrivi(digitLink.lenReport, NuovaLunghezza(dati[pos++]));
        std::size_t pezzo = (controllo & 0x3F) + 1u;
        if (pezzo > n - pos) pezzo = n - pos;
        if (pezzo == 0) break;
        std::memcpy(digitLink.bufLettura, dati + pos, pezzo);
        pos += pezzo;
        // The reader drains a read until the gather takes no more of it.
        digitLink.numLetti = static_cast<std::int32_t>(pezzo);
        ProcessaReport(digitLink);
        Verifica(digitLink.numAccum >= 0 && digitLink.numAccum <= dimBuffer);
    }
    return 0;
}
