// Encoding of tablet reports, the other side of the decoders: what a tablet
// of each model sends for a pointer at (x, y) with a button down (0 = none).
// Used by the simulated tablet, the tools and the tests.
#ifndef VELMARIN_CODIFICA_REPORT_H
#define VELMARIN_CODIFICA_REPORT_H

#include <cstdint>
#include <string>

// The bytes of one report of model `tipo` (1..8); empty for another model.
// Values beyond what a binary format carries are cut to its bits; the text
// formats clamp a coordinate to the digits they carry (0..99999, or 0..999999
// for the wide Rolley line; model 4 carries any 32-bit value).
std::string CodificaReport(int tipo, std::int32_t x, std::int32_t y, int bottone);

// One line of the Rolley MR2 (model 6) in the chosen layout: wide (six digits
// a coordinate) or narrow (five). It ends with the CR that the next line
// begins with. CodificaReport picks the narrow layout while both coordinates
// fit it.
std::string CodificaRolley(std::int32_t x, std::int32_t y, int bottone, bool larga);

#endif
