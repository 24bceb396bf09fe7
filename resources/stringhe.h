// The library's string table: every text a user sees, by its resource id.
#ifndef VELMARIN_STRINGHE_H
#define VELMARIN_STRINGHE_H

// The text of `id`, or null when the table has no such id.
const char* TestoRisorsa(unsigned id);

#endif
