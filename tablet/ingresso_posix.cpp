// The library's entry point on POSIX: a constructor that runs when the
// library is loaded. The address of an object of the library stands in for
// the instance handle that Windows gives its entry point.
#include "tablet/avvio.h"

namespace {

char ancoraIstanza;

__attribute__((constructor)) void IngressoLibreria() { AvviaLibreria(&ancoraIstanza); }

}  // namespace
