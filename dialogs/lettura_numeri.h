// How the entry dialogs read the numbers typed into their edits.
#ifndef VELMARIN_LETTURA_NUMERI_H
#define VELMARIN_LETTURA_NUMERI_H

#include <cstdint>

// What an empty real field reads as; every accepted real lies below it.
constexpr double valoreAssente = 1.7e200;

// Reads an edit's text as a real: empty gives valoreAssente, else atof of the
// text (0 when it cannot be read).
double LeggiReale(const char* testo);

// Whether a real read from a field may be accepted: finite and below
// valoreAssente. An infinite value (a typed "-1e999") is refused like a huge
// one: no calibration could use it.
bool IsRealeAccettabile(double valore);

// Reads an edit's text as a count: empty gives -1, else what atoi gives for
// the text, but saturated to the 32-bit range instead of undefined when the
// digits overflow it.
std::int32_t LeggiIntero(const char* testo);

#endif
