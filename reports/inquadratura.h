// Where one report ends and the next begins, in time: what the reader needs
// of a report format to close a gather when the line falls quiet.
//
// A tablet sends each report in one go, and a streaming tablet sends the
// next one right behind it. A line quiet for three report-times is therefore
// between reports: whatever the gather holds then is all of what came, and
// waiting for the gather to fill would hold a whole report back until the
// next one arrives, or for ever after a single press. So a quiet line closes
// the gather: its decoder takes the bytes as a full gather, and whatever is
// not a whole report is dropped.
//
// The text decoders skip the bytes up to the first line end of a gather, as
// the tail of a line that the gather's start cut. A gather that began right
// after a line end, or after a quiet line, holds a whole line from its first
// byte on; for a gather closed by a pause that line is put behind a line end,
// so that the decoder takes it.
#ifndef VELMARIN_INQUADRATURA_H
#define VELMARIN_INQUADRATURA_H

#include <cstdint>

#include "digit_link.h"

// The pause never falls below this many milliseconds, whatever the rate: a
// USB adapter hands bytes on every 16 ms, a scheduler's tick is up to 16 ms,
// and the Windows reader ends a read on a quiet line after 20 ms; none of
// them may look like a tablet that stopped.
constexpr std::uint32_t pausaMinima = 50;

// Bits on the line for one character: start, data, parity, stop.
std::uint32_t BitCarattere(int bitDati, bool parita, int bitStop);

// The line's pause for report format `tipo`: three times the time its
// longest report takes on a line of `velocita` baud and `bitCarattere` bits
// a character, at least pausaMinima. In milliseconds.
std::uint32_t PausaLinea(int tipo, std::uint32_t velocita, std::uint32_t bitCarattere);

// Whether `byte`, the last byte of a read, ends a report line of format
// `tipo`, so that the next byte begins one. False for the binary formats and
// for format 4, whose reports carry their own start.
bool FineRigaReport(int tipo, int byte);

// For the reader once the line has been quiet for the pause: decodes the
// gather as a full gather and notifies as ProcessaReport does, then drops
// what is left. `inizioRiga` says that the gather began at a report's first
// byte. Returns what ProcessaReport returns.
int ChiudiPerPausa(TDigitLink& link, bool inizioRiga);

// Whether the decoder of format `tipo` purges the port's input queue after
// its attempt: the bytes that come next do not follow the ones read.
bool SvuotaIngresso(int tipo);

#endif
