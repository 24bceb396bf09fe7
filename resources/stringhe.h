// The library's string table: every text a user sees, by its resource id.
#ifndef VELMARIN_STRINGHE_H
#define VELMARIN_STRINGHE_H

// The box of a port that could not be opened: a host may show the library's
// last error (the device, and why) under it.
constexpr unsigned idsPortaNonConfigurata = 10060;

// The text of `id`, or null when the table has no such id.
const char* TestoRisorsa(unsigned id);

#endif
