// errno as the system's code of a failure, described by strerror_r.
#include <cerrno>
#include <cstring>

#include "link/ultimo_errore.h"

namespace {

// The two strerror_r of the C libraries: GNU's returns the text, POSIX's
// fills the buffer. Only one of them is called on a platform.
[[maybe_unused]] const char* Testo(const char* restituito, const char*) { return restituito; }
[[maybe_unused]] const char* Testo(int, const char* buffer) { return buffer; }

}  // namespace

unsigned long CodiceSistema() noexcept { return static_cast<unsigned long>(errno); }

std::string DescrizioneSistema(unsigned long codice)
{
    char buffer[256] = "";
    return Testo(strerror_r(static_cast<int>(codice), buffer, sizeof buffer), buffer);
}

void ImpostaCodiceSistema(unsigned long codice) noexcept { errno = static_cast<int>(codice); }
