// The reader's view of time on the line: a report cut short never joins the
// next one, and a quiet line never holds a whole report back.
//
// - A resume of delivery purges the port's queues, so the bytes that come
//   next do not follow the ones gathered: the gather under way is dropped.
// - When the line has been quiet for its pause (reports/inquadratura.h), the
//   gather is closed: the whole report in it is decoded at once and an
//   incomplete tail is dropped. A slow tablet, or a single press followed by
//   silence, is heard with the pause as its only delay.
// - A gather is known to begin at a report's first byte when the byte read
//   just before it ended a report line, or when the line had been quiet for
//   the pause before it: a tablet sends each report in one go.
// The decoders' framing is what keeps a cut report from joining the next
// whole one; no rule here depends on how long a gap inside a report was.
//
// These rules depart from the original design, which kept a part-gathered
// report across a hold and a resume and joined the next bytes behind it, and
// decoded only full gathers.
//
// The rule stands apart from the serial layer: the reader's drain hands every
// read to ProcessaLettura instead of ProcessaReport, the reader calls
// ProcessaQuiete whenever a wait or a drain found the line quiet, and
// IODevResume and IODevOpen call SegnalaRipresa.
#ifndef VELMARIN_RACCOLTA_INTERROTTA_H
#define VELMARIN_RACCOLTA_INTERROTTA_H

#include <atomic>
#include <cstdint>

struct TDigitLink;

struct TGuardiaRaccolta {
    std::atomic<std::uint32_t> riprese{0};  // resumes so far; written by IODevResume
    // The line's settings, written by the open while no reader runs:
    std::uint32_t velocita = 9600;
    std::uint32_t bitCarattere = 10;
    // The reader's own:
    std::uint32_t ripreseViste = 0;  // resumes already acted on
    std::uint32_t ultimoArrivo = 0;  // ms of the last read with bytes, or of the resume seen
    int ultimoLetto = -1;            // the last byte read; -1 when a purge may have dropped some
    bool quieta = false;             // quiet for a pause since ultimoArrivo
    bool inizioRiga = false;         // the gather under way began at a report's first byte
};

// The one guard of the process, beside the one link record.
extern TGuardiaRaccolta guardiaRaccolta;

// For IODevOpen, before the reader starts: the settings of its line, which
// the pause is reckoned from.
void ImpostaLineaGuardia(std::uint32_t velocita, int bitDati, bool parita, int bitStop,
                         TGuardiaRaccolta& guardia = guardiaRaccolta);

// For IODevResume once it has purged the port's queues, and for IODevOpen:
// the gather under way is dropped before the next bytes are gathered, and
// nothing read before counts as the bytes ahead of them. Called where no
// drain is under way.
void SegnalaRipresa(TGuardiaRaccolta& guardia = guardiaRaccolta);

// For the reader, with every read that gave bytes, in place of
// ProcessaReport; `adesso` is a millisecond clock. Returns what
// ProcessaReport returns.
int ProcessaLettura(TDigitLink& link, std::uint32_t adesso, TGuardiaRaccolta& guardia = guardiaRaccolta);

// For the reader whenever it found the line quiet: acts on a resume and,
// once the line has been quiet for its pause, closes the gather. Returns 1
// when that decoded a report.
int ProcessaQuiete(TDigitLink& link, std::uint32_t adesso, TGuardiaRaccolta& guardia = guardiaRaccolta);

// How long the reader may wait on a quiet line before ProcessaQuiete has
// something to do, in milliseconds; -1 for as long as it likes.
int AttesaQuiete(const TDigitLink& link, std::uint32_t adesso, const TGuardiaRaccolta& guardia = guardiaRaccolta);

#endif
