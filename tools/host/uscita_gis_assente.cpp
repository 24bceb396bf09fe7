// The GIS output of a host built without GDAL: digitizing is not available.
#include "uscita_gis.h"

struct TUscitaGis::TImpl {};

TUscitaGis::TUscitaGis() = default;
TUscitaGis::~TUscitaGis() = default;

bool TUscitaGis::Disponibile() { return false; }

bool TUscitaGis::Verifica(const TOpzioniGis&, std::string& errore)
{
    errore = "digitize is not available: velmarin-host was built without GDAL (libgdal-dev)";
    return false;
}

bool TUscitaGis::Apri(const TOpzioniGis& o, std::string& errore) { return Verifica(o, errore); }

bool TUscitaGis::Scrivi(const TElementoGis&, std::string& errore)
{
    errore = "no GIS output";
    return false;
}

std::string TUscitaGis::Descrizione() const { return {}; }

std::vector<std::string> TUscitaGis::File() const { return {}; }
