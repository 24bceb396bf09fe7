// A real number as a person reads it: the fewest significant digits that
// give the same number back, up to fifteen, and never a negative zero
// ("127.5", "1.23e-05", "0"). The toolkit's static controls show numbers so,
// and so does the host.
#ifndef TOLDEKO_TESTO_REALE_H
#define TOLDEKO_TESTO_REALE_H

#include <string>

std::string TestoReale(double valore);

#endif
