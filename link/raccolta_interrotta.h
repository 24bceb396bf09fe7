// A report cut short never joins the next one.
//
// The gather keeps what it holds until a whole report's worth of bytes is
// there. When a report is cut short (the tablet stops in the middle of it,
// or delivery is held and resumed while it was half gathered, and the resume
// drops what the port had queued), the bytes that come next belong to
// another report, and a decoder would read the two pieces as one: a position
// or a press that the tablet never sent. So a gather that was cut short is
// dropped, in two places:
// - at a resume: the gather under way goes with the port's queues;
// - before new bytes are gathered, when the last byte of the gather arrived
//   more than pausaRaccolta ago.
// This departs from the original design, which keeps a part-gathered report
// across a hold and a resume and joins the next bytes behind it.
//
// The rule stands apart from the serial layer: the reader's drain hands every
// read to ProcessaLettura instead of ProcessaReport, and IODevResume calls
// SegnalaRipresa.
#ifndef VELMARIN_RACCOLTA_INTERROTTA_H
#define VELMARIN_RACCOLTA_INTERROTTA_H

#include <atomic>
#include <cstdint>

struct TDigitLink;

// The longest silence inside one report, in milliseconds. The longest gather
// is 40 bytes; at 4800 baud with 11 bits a character (7 data bits, parity and
// two stop bits, or 8 data bits, parity and one) it takes about 92 ms, so
// a gap longer than this is never a pause inside a report. The gap is taken
// between the reader's reads, as a serial port tells no time of arrival: a
// reader held up longer than this in the middle of a report drops that
// report. Between a report lost and one the tablet never sent, the rule
// takes the loss.
constexpr std::uint32_t pausaRaccolta = 100;

struct TGuardiaRaccolta {
    std::atomic<std::uint32_t> riprese{0};  // resumes so far; written by IODevResume
    std::uint32_t ripreseViste = 0;         // the reader's own: resumes already acted on
    std::uint32_t ultimoByte = 0;           // the reader's own: tick of the last gathered read
};

// The one guard of the process, beside the one link record.
extern TGuardiaRaccolta guardiaRaccolta;

// For IODevResume, once it has purged the port's queues: the gather under way
// is dropped before the next bytes are gathered. Called where no drain is
// under way, so that no byte read before the purge joins the new gather.
void SegnalaRipresa(TGuardiaRaccolta& guardia = guardiaRaccolta);

// For the reader, with every read that gave bytes, in place of
// ProcessaReport: drops a gather cut short by a resume or by a silence longer
// than pausaRaccolta, then gathers and decodes as ProcessaReport does.
// `adesso` is the millisecond tick (GetTickCount) at the read. Returns what
// ProcessaReport returns.
int ProcessaLettura(TDigitLink& link, std::uint32_t adesso, TGuardiaRaccolta& guardia = guardiaRaccolta);

#endif
