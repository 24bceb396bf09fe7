// Parsing helpers shared by the decoders of the text report formats: a
// decimal field gathered character by character into a bounded store, and
// byte searches in the gather that never look past the gathered bytes.
#ifndef VELMARIN_CAMPO_TESTO_H
#define VELMARIN_CAMPO_TESTO_H

#include <cstdint>

#include "digit_link.h"

constexpr std::uint8_t carCR = 0x0D;
constexpr std::uint8_t carLF = 0x0A;

inline bool EUnaCifra(std::uint8_t c) { return c >= '0' && c <= '9'; }

// A decimal field of a report line, converted the way atol converts its text:
// an optional sign first, then digits. The field stores at most `capienza`
// characters, its sign included; characters beyond that are skipped, as a
// full store would drop them. The value is kept as it grows, so no text is
// stored and nothing is allocated.
//
// Two cases the wire can produce and the formats leave open, decided here:
// - a field with no digit (",," or a bare sign) is worth 0, as atol gives
//   for an empty text;
// - a value beyond 32 bits is saturated to INT32_MAX or INT32_MIN, so a
//   line of forty nines gives the largest count, never a wrapped one.
class TCampoDecimale {
public:
    explicit TCampoDecimale(int capienza) : capienza_(capienza) {}

    // Opens the field with its sign, which takes one place of the store.
    void Segno(std::uint8_t segno);
    // Appends a digit while the store has room; any other byte is ignored.
    void Aggiungi(std::uint8_t c);

    int Cifre() const { return cifre_; }
    std::int32_t Valore() const;

private:
    int capienza_;
    int occupati_ = 0;          // characters stored, sign included
    int cifre_ = 0;             // digits stored
    bool negativo_ = false;
    std::int64_t modulo_ = 0;   // saturates just past the 32-bit range
};

// The count of gathered bytes, never beyond the gather buffer.
inline int NumGather(const TDigitLink& link)
{
    if (link.numAccum < 0) return 0;
    return link.numAccum > dimBuffer ? dimBuffer : link.numAccum;
}

// Index of the first byte `c` in the gather from `da` on, -1 when none.
int TrovaNelGather(const TDigitLink& link, std::uint8_t c, int da);

// The gathered byte at `pos`; 0 for a column behind the gathered bytes, so
// a fixed column the line does not reach counts as a non-digit.
inline std::uint8_t ByteGather(const TDigitLink& link, int pos)
{
    return (pos >= 0 && pos < NumGather(link)) ? link.bufReport[pos] : 0;
}

// Appends to `campo` the digits of the gathered columns da..a, both included.
void ColonneNelCampo(const TDigitLink& link, int da, int a, TCampoDecimale& campo);

#endif
