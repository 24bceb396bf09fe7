// Other processes that hold the tablet's device open. The library's open
// keeps out later opens, not a program that had the device open already: a
// modem manager or a forgotten terminal program goes on reading and takes the
// tablet's bytes, and the tablet then seems silent. The host warns of them.
#ifndef VELMARIN_HOST_OCCUPANTI_PORTA_H
#define VELMARIN_HOST_OCCUPANTI_PORTA_H

#include <cstdio>
#include <string>
#include <vector>

struct TOccupante {
    int pid;
    std::string nome;  // the process's command name
};

// The processes other than this one with a descriptor on the device at
// `percorso`, found in /proc/*/fd as fuser finds them; processes whose
// descriptors cannot be read (another user's, without privileges) are not
// seen. Empty for a path that is no device.
std::vector<TOccupante> OccupantiPorta(const std::string& percorso);

// Writes a warning to `out` for each process that OccupantiPorta finds.
void AvvisaOccupanti(const std::string& percorso, std::FILE* out);

#endif
