// Decoders of the three binary report formats. Reports are fixed length with
// no end marker, so the decoder finds a report's first byte by its sync bits.
// The gather, not the report, is the unit of work: after one attempt every
// gathered byte is dropped, those behind the report too.
//
// Framing. A tablet's data bytes never pass its format's sync test: format 1
// sends seven bits a data byte, format 5 six (five in b1, b4, b7), format 8
// seven. A sync byte where the report's data should stand is therefore the
// first byte of the next report, and the report before it was cut short (the
// tablet lost bytes, or stopped and went on): its bytes are dropped and the
// decoder goes on from that byte. Only a whole, uncut report is decoded.
// This departs from the original decoders, which took the first sync byte's
// report whatever stood in it: a format 8 data byte with bit 7 set, which
// they rejected, now starts a report, and a format 5 data byte 0x40 (which
// the tablet never sends) is taken for the sync byte it is.
//
// Format 1, "SummaGraph.MM BINARY", 5 bytes:
//   b0  bits 7..6 = 1 0 (sync), bit 4 x positive, bit 3 y positive,
//       bits 2..0 button 0..7
//   b1, b2  x magnitude = b2 * 128 + b1, both read as signed 8-bit
//   b3, b4  y magnitude = b4 * 128 + b3, likewise
//
// Format 5, "Summa MicroGrid 3", 8 bytes, all unsigned:
//   b0  '@' (sync)           b1  bits 4..0 button 0..31
//   b2, b3, b4  x bits 5..0, 11..6, 16..12; bit 5 of b4 set rejects
//   b5, b6, b7  y likewise; bit 5 of b7 set rejects
//
// Format 8, "Numonics Binary", 6 bytes:
//   b0  bit 7 sync, bits 6..2 button pattern, bits 1..0 x bits 15..14
//   b1, b2  x bits 13..7, 6..0     b3 bits 1..0 y bits 15..14
//   b4, b5  y bits 13..7, 6..0     bit 7 of b1..b5 set: a sync, the report is cut
//   button: (b0 & 0x7C) 0x44 -> 1, 0x48 -> 2, 0x50 -> 3, 0x60 -> 4, else 0
#include <cstddef>

#include "digit_link.h"

namespace {

struct TFormatoBinario {
    bool (*sync)(std::uint8_t);
    int lunghezza;                                            // bytes in a report
    bool (*decodifica)(const std::uint8_t* b, TDigitLink&);  // false rejects
};

// The first sync byte among the data bytes of the report that begins at
// `inizio`, within the gathered bytes; -1 when there is none.
int SyncNeiDati(const TDigitLink& link, const TFormatoBinario& formato, int inizio)
{
    const int fine = inizio + formato.lunghezza < link.numAccum ? inizio + formato.lunghezza : link.numAccum;
    for (int j = inizio + 1; j < fine; ++j)
        if (formato.sync(link.bufReport[j])) return j;
    return -1;
}

// The one plan of the three decoders; the format says what differs.
int DecodificaBinario(TDigitLink& link, const TFormatoBinario& formato)
{
    if (!GatherChiuso(link)) return 0;
    int esito = 0;
    for (int i = 0; i < link.numAccum; ++i) {
        if (!formato.sync(link.bufReport[i])) continue;
        const int taglio = SyncNeiDati(link, formato, i);
        if (taglio >= 0) {
            i = taglio - 1;  // a cut report: the next one begins at the sync byte
            continue;
        }
        if (i + formato.lunghezza - 1 < link.numAccum)
            esito = formato.decodifica(link.bufReport + i, link) ? 1 : 0;
        break;
    }
    link.numAccum = 0;
    return esito;
}

std::int32_t Firmato(std::uint8_t b) { return static_cast<std::int8_t>(b); }

bool SyncSumma(std::uint8_t b) { return (b & 0xC0) == 0x80; }
bool SyncMicroGrid(std::uint8_t b) { return b == 0x40; }
bool SyncNumonics(std::uint8_t b) { return (b & 0x80) != 0; }

bool CampiSumma(const std::uint8_t* b, TDigitLink& link)
{
    std::int32_t x = Firmato(b[2]) * 128 + Firmato(b[1]);
    std::int32_t y = Firmato(b[4]) * 128 + Firmato(b[3]);
    if ((b[0] & 0x10) == 0) x = -x;
    if ((b[0] & 0x08) == 0) y = -y;
    Scrivi(link.xReport, x);
    Scrivi(link.yReport, y);
    Scrivi(link.bottone, b[0] & 0x07);
    return true;
}

bool CampiMicroGrid(const std::uint8_t* b, TDigitLink& link)
{
    if ((b[4] & 0x20) != 0 || (b[7] & 0x20) != 0) return false;
    const std::int32_t x = ((b[4] & 0x1F) << 12) | ((b[3] & 0x3F) << 6) | (b[2] & 0x3F);
    const std::int32_t y = ((b[7] & 0x1F) << 12) | ((b[6] & 0x3F) << 6) | (b[5] & 0x3F);
    Scrivi(link.xReport, x);
    Scrivi(link.yReport, y);
    Scrivi(link.bottone, b[1] & 0x1F);
    return true;
}

int BottoneNumonics(std::uint8_t b0)
{
    switch (b0 & 0x7C) {
    case 0x44: return 1;
    case 0x48: return 2;
    case 0x50: return 3;
    case 0x60: return 4;
    default: return 0;
    }
}

bool CampiNumonics(const std::uint8_t* b, TDigitLink& link)
{
    const std::int32_t x = ((b[0] & 0x03) << 14) | (b[1] << 7) | b[2];
    const std::int32_t y = ((b[3] & 0x03) << 14) | (b[4] << 7) | b[5];
    Scrivi(link.xReport, x);
    Scrivi(link.yReport, y);
    Scrivi(link.bottone, BottoneNumonics(b[0]));
    return true;
}

constexpr TFormatoBinario formatoSumma{SyncSumma, 5, CampiSumma};
constexpr TFormatoBinario formatoMicroGrid{SyncMicroGrid, 8, CampiMicroGrid};
constexpr TFormatoBinario formatoNumonics{SyncNumonics, 6, CampiNumonics};

}  // namespace

int DecodificaSummaBin(TDigitLink& link) { return DecodificaBinario(link, formatoSumma); }
int DecodificaMicroGrid(TDigitLink& link) { return DecodificaBinario(link, formatoMicroGrid); }
int DecodificaNumonics(TDigitLink& link) { return DecodificaBinario(link, formatoNumonics); }
