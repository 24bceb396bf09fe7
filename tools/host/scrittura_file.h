// Files the host writes beside its GIS output, checked before the work that
// feeds them and written so that a failure leaves them as they were.
#ifndef VELMARIN_HOST_SCRITTURA_FILE_H
#define VELMARIN_HOST_SCRITTURA_FILE_H

#include <string>

// The folder of `percorso`: "." for a bare name, "/" at the root.
std::string Cartella(const std::string& percorso);

// Appends `riga` to the file `percorso` whole or not at all: a write that
// fails half way is cut back off. False with the file and the reason in
// `errore`.
bool AggiungiRiga(const std::string& percorso, const std::string& riga, std::string& errore);

// Whether `percorso` can take a line: an existing file writable, or a new
// one in a folder that is. Checked before the work that feeds it.
bool VerificaScrivibile(const std::string& percorso, std::string& errore);

#endif
