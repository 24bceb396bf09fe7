// The reason for the last refusal on the calling thread, in English, for a
// host's developer: the port and its device, the system's own words, the
// setting or the argument refused. The user's boxes keep their Italian texts;
// this is what a log or an exception carries beside them.
//
// Each thread has its own, as errno and GetLastError do, so that the
// reader's failures never overwrite the host's. A success leaves it as it
// was: it is read after a call has failed, not to learn whether it did.
#ifndef VELMARIN_ULTIMO_ERRORE_H
#define VELMARIN_ULTIMO_ERRORE_H

#include <string>

// Records `testo` with the system's error code of the failure (errno, or
// GetLastError on Windows; 0 for a refused argument). Never throws: a text
// that cannot be stored leaves a fixed one.
void RegistraErrore(const std::string& testo, unsigned long codiceSistema = 0) noexcept;
// The same, with the system's description of its code appended: "testo: why".
void RegistraErroreSistema(const std::string& testo, unsigned long codiceSistema) noexcept;
const char* TestoUltimoErrore() noexcept;
// Puts the recorded code back as the thread's errno or last error, which the
// clean-up after the failure and the library's box may have changed; 0 for a
// failure the system had no part in.
void RipristinaCodiceSistema() noexcept;

// The platform's side: the thread's current code, its description, and
// setting it.
unsigned long CodiceSistema() noexcept;
std::string DescrizioneSistema(unsigned long codice);
void ImpostaCodiceSistema(unsigned long codice) noexcept;

#endif
