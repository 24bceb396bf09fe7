// Encoding of tablet reports, the other side of the decoders: what a tablet
// of each model sends for a pointer at (x, y) with a button down (0 = none).
// Used by the simulated tablet, the tools and the tests.
#ifndef VELMARIN_CODIFICA_REPORT_H
#define VELMARIN_CODIFICA_REPORT_H

#include <cstdint>
#include <string>

// The bytes of one report of model `tipo` (1..8); empty for another model.
// Values beyond what a format carries are cut to its bits.
std::string CodificaReport(int tipo, std::int32_t x, std::int32_t y, int bottone);

#endif
