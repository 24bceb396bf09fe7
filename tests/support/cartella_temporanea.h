// A directory of a test's own under /tmp, removed with all it holds.
#ifndef VELMARIN_TEST_CARTELLA_TEMPORANEA_H
#define VELMARIN_TEST_CARTELLA_TEMPORANEA_H

#include <stdlib.h>

#include <filesystem>
#include <string>

struct TCartellaTemporanea {
    TCartellaTemporanea()
    {
        char modello[] = "/tmp/velmarin-prova-XXXXXX";
        if (mkdtemp(modello)) percorso = modello;
    }
    ~TCartellaTemporanea()
    {
        std::error_code e;
        if (!percorso.empty()) std::filesystem::remove_all(percorso, e);
    }
    TCartellaTemporanea(const TCartellaTemporanea&) = delete;
    TCartellaTemporanea& operator=(const TCartellaTemporanea&) = delete;
    std::string percorso;  // empty when none could be made
};

#endif
