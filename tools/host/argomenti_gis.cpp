#include "argomenti_gis.h"

#include <cmath>
#include <cstdlib>

#include "scrittura_file.h"

const char* const usoGis =
    "Digitizing into a GIS file (after a calibration: calibrate points digitize):\n"
    "  digitize          the tablet's buttons draw: funzConferma a point, or a vertex\n"
    "                    of the open line; the Fine Ent. functions open a line (one\n"
    "                    segment) or a polyline, the Dis. Lib. ones a line or polyline\n"
    "                    whose vertices follow the pointer; funzAnnulla ends it\n"
    "  --out FILE        the GIS file, appended to when it exists\n"
    "  --format NAME     a GDAL vector format (default GPKG, or from the extension)\n"
    "  --crs CODE        the ground's reference system written in the file (EPSG:3003)\n"
    "  --layer NAME      the layer (default digitized)\n"
    "  --stream-step D   ground units between vertices drawn freely (default 1)\n"
    "  --report FILE     the log of calibrations, one JSON line each, appended to\n"
    "                    (default beside --out: map.gpkg, map.calibrations.jsonl)\n"
    "  --setup FILE      the tablet's set-up file (default\n"
    "                    $XDG_CONFIG_HOME/velmarin/setup, else ~/.config/velmarin/setup)\n";

int AnalizzaOpzioneGis(const std::vector<std::string>& a, std::size_t& i, TOpzioniGisHost& o, std::string& errore)
{
    const std::string& s = a[i];
    std::string* testo = s == "--out" ? &o.gis.percorso
                         : s == "--format" ? &o.gis.formato
                         : s == "--crs" ? &o.gis.crs
                         : s == "--layer" ? &o.gis.strato
                         : s == "--report" ? &o.rapporto
                         : s == "--setup" ? &o.impostazioni
                                          : nullptr;
    if (!testo && s != "--stream-step") return 0;
    if (i + 1 >= a.size() || a[i + 1].empty()) {
        errore = s + " needs a value";
        return -1;
    }
    const std::string& v = a[++i];
    if (testo) {
        *testo = v;
        return 1;
    }
    char* fine = nullptr;
    o.passo = std::strtod(v.c_str(), &fine);
    if (*fine != '\0' || !(o.passo > 0) || !std::isfinite(o.passo)) {
        errore = "stream step " + v + " is not a distance above 0";
        return -1;
    }
    return 1;
}

std::string PercorsoRapporto(const TOpzioniGisHost& o)
{
    if (!o.rapporto.empty()) return o.rapporto;
    const std::string& u = o.gis.percorso;
    if (u.empty()) return {};
    const auto barra = u.rfind('/');
    const auto punto = u.rfind('.');
    const bool estensione = punto != std::string::npos && punto > (barra == std::string::npos ? 0 : barra + 1);
    return (estensione ? u.substr(0, punto) : u) + ".calibrations.jsonl";
}

bool VerificaUscite(const TOpzioniGisHost& o, bool digitalizza, bool calibra, std::string& errore)
{
    if (digitalizza && !TUscitaGis::Verifica(o.gis, errore)) return false;
    const std::string registro = PercorsoRapporto(o);
    return !calibra || registro.empty() || VerificaScrivibile(registro, errore);
}
