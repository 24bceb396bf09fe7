// The file that digitized features go to, through GDAL/OGR: any vector format
// GDAL writes, GeoPackage when neither --format nor the file's extension
// names another. Each feature is committed as soon as it is written, so a
// run cut short by a signal, a crash or an unplugged tablet leaves a file
// that GDAL reads with every feature written before:
//   - GeoPackage and the other formats with transactions: one transaction
//     per feature, in the file itself;
//   - Shapefile and CSV: the feature appended and the file's headers synced;
//   - every other format (GeoJSON, DXF, KML...): the whole layer is written
//     again to a new file beside the output, which then replaces it by a
//     rename, so the output is always a complete file.
// An existing file is appended to: its layer of that name gets the new
// features (the only layer, in a format that holds one), with the fields
// below added when it lacks them; a file GDAL cannot read, a layer in
// another CRS, or a file GDAL cannot write back as it reads it (DXF) is
// refused and left as it is. Shapefile layers hold one geometry type, so there
// lines go to a second file beside the first, named <name>_lines.shp.
//
// Fields: kind ("point", "line", "polyline"), time (UTC, ISO 8601), button,
// function (its name in digit.h), count_x and count_y (tablet counts of the
// first vertex). Geometry: x East, y North, in ground units.
#ifndef VELMARIN_HOST_USCITA_GIS_H
#define VELMARIN_HOST_USCITA_GIS_H

#include <memory>
#include <string>

#include "elemento_gis.h"

struct TOpzioniGis {
    std::string percorso;
    std::string formato;   // a GDAL driver name; empty: from the extension
    std::string crs;       // what OGR's spatial reference takes; empty: none
    std::string strato = "digitized";
};

class TUscitaGis {
public:
    TUscitaGis();
    ~TUscitaGis();
    TUscitaGis(const TUscitaGis&) = delete;
    TUscitaGis& operator=(const TUscitaGis&) = delete;

    // False when this program was built without GDAL.
    static bool Disponibile();
    // Opens or creates the file; false with the reason in `errore`.
    bool Apri(const TOpzioniGis& o, std::string& errore);
    // Writes and commits one feature; false with the reason in `errore`.
    bool Scrivi(const TElementoGis& e, std::string& errore);
    // "GPKG, 3 features already there", for the terminal.
    std::string Descrizione() const;

private:
    struct TImpl;
    std::unique_ptr<TImpl> impl;
};

#endif
