// The link record between the library and its reader thread, and the report
// path: the reader hands every read to ProcessaReport, which gathers bytes up
// to the model's report length, runs the decoder of the report format, and
// turns the decoded level (a button is down) into an edge (a button went
// down) and a move into at most one notification.
//
// One static record, digitLink, serves the whole process. The host's thread
// writes the target and the format while the reader runs, and reads the last
// report from outside a notification, so those fields are relaxed atomics:
// plain aligned words, as the design wants, without a data race. The target
// alone is set with release and read with acquire, since the reader calls
// into the object it points to. The gather state belongs to the reader
// thread alone.
#ifndef VELMARIN_DIGIT_LINK_H
#define VELMARIN_DIGIT_LINK_H

#include <atomic>
#include <cstdint>

#include "digit.h"

constexpr int dimBuffer = 1024;  // size of the read and of the gather buffer

struct TDigitLink {
    std::atomic<CDigitNtfy*> ntfy;         // target; null when nobody listens
    std::atomic<std::int32_t> lenReport;   // bytes to gather before a decode
    std::int32_t numLetti;                 // bytes of the last read
    std::int32_t numAccum;                 // bytes gathered so far
    std::uint8_t bufLettura[dimBuffer];    // read buffer
    std::uint8_t bufReport[dimBuffer];     // gather buffer, the decoders' input
    std::atomic<std::int8_t> tipoReport;   // report format 1..8, 0 = none
    std::atomic<std::int32_t> xReport;     // report being handled, -1 if none
    std::atomic<std::int32_t> yReport;
    std::int32_t xPrec;                    // last decoded report
    std::int32_t yPrec;
    std::atomic<std::int32_t> bottone;     // button of the report, -1 if none
    std::atomic<std::int32_t> bottonePremuto;  // button this report announces
    std::int32_t premuto;                  // button-down latch, 0 or 1
    std::atomic<std::intptr_t> hPorta;     // the open port, 0 while not open
    std::uint8_t porta;                    // port settings for IODevCreate
    std::int32_t velocita;
    char parita;
    std::uint8_t bitDati;
    std::uint8_t bitStop;
    std::uint8_t controlloFlusso;          // bit 0 DSR/DTR, 1 CTS/RTS, 2 XON/XOFF
    // The reader's own, beyond the design's fields: 1 while a quiet line
    // closes the gather, so that the decoders take the bytes gathered so far
    // as a full gather (link/raccolta_interrotta.h).
    std::uint8_t chiusoDaPausa;
};

extern TDigitLink digitLink;

// Stores zero in every field of the record.
void AzzeraDigitLink(TDigitLink& link);

// Relaxed loads and stores of the shared words, to keep call sites short.
template <class T>
inline T Leggi(const std::atomic<T>& a) { return a.load(std::memory_order_relaxed); }
template <class T, class U>
inline void Scrivi(std::atomic<T>& a, U v) { a.store(static_cast<T>(v), std::memory_order_relaxed); }

// The report length as the gather uses it: lenReport, read once, and never
// more than the gather buffer holds, whatever length a caller set.
inline std::int32_t LenGather(const TDigitLink& link)
{
    const std::int32_t len = Leggi(link.lenReport);
    return len > dimBuffer ? dimBuffer : len;
}

// Whether the gather is ready for the decoder's one attempt: full, or closed
// by a quiet line with at least one byte in it.
inline bool GatherChiuso(const TDigitLink& link)
{
    return link.numAccum >= LenGather(link) || (link.chiusoDaPausa != 0 && link.numAccum > 0);
}

// Gathers the last read and, with a full gather, decodes and notifies.
// Returns 1 when a report was decoded, else 0.
int ProcessaReport(TDigitLink& link);

// The decoders, one per report format. Each returns 1 when it decoded a
// report into xReport, yReport and bottone, else 0.
int DecodificaSummaBin(TDigitLink& link);     // format 1
int DecodificaSummaAscii(TDigitLink& link);   // format 2
int DecodificaCalcomp2000(TDigitLink& link);  // format 3
int DecodificaOce(TDigitLink& link);          // format 4, polled
int DecodificaMicroGrid(TDigitLink& link);    // format 5
int DecodificaRolley(TDigitLink& link);       // format 6
int DecodificaCalcomp9500(TDigitLink& link);  // format 7
int DecodificaNumonics(TDigitLink& link);     // format 8

#endif
