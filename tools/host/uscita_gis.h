// The file that digitized features go to, through GDAL/OGR: any vector format
// GDAL writes, GeoPackage when neither --format nor the file's extension
// names another.
//
// One layer per geometry, so that a GIS reads each with its type: points in
// the layer named by --layer, lines and polylines in <layer>_lines, polygons
// (closed polylines) in <layer>_polygons. A format of one layer a file
// (GeoJSON, Shapefile, CSV, DXF...) has the points in the --out file and the
// others in files beside it: map.geojson, map_lines.geojson,
// map_polygons.geojson.
//
// Each feature is committed as soon as it is written, so a run cut short by
// a signal, a crash, a full disk or an unplugged tablet leaves files that
// GDAL reads with every feature written before:
//   - GeoPackage and the other formats with transactions: one transaction
//     per feature, in the file itself;
//   - Shapefile and CSV: the feature appended and the file's headers synced;
//   - every other format (GeoJSON, DXF, KML...): the whole layer is written
//     again to a new file beside the output, which then replaces it by a
//     rename, so the output is always a complete file.
// An existing file is appended to, its layers getting the fields below when
// they lack them; a file GDAL cannot read, a layer in another CRS, or a file
// GDAL cannot write back as it reads it (DXF) is refused and left as it is.
//
// Fields: kind ("point", "line", "polyline", "polygon"), time (UTC; a
// date-time where the format has one, ISO 8601 text in Shapefile), button,
// function (its label in the button dialog), calib_id (the calibration
// record that gave the coordinates), count_x and count_y (tablet counts of
// the press that opened it). Geometry: x East, y North, in ground units.
#ifndef VELMARIN_HOST_USCITA_GIS_H
#define VELMARIN_HOST_USCITA_GIS_H

#include <memory>
#include <string>
#include <vector>

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
    // Whether Apri would take `o`, touching nothing: the CRS, the format,
    // the folder, and the files already there. A command checks its output
    // with it before the work that feeds the output.
    static bool Verifica(const TOpzioniGis& o, std::string& errore);
    // Opens or creates the files; false with the reason in `errore`.
    bool Apri(const TOpzioniGis& o, std::string& errore);
    // Writes and commits one feature; false with the file and the reason in
    // `errore`, and what was committed before left as it was.
    bool Scrivi(const TElementoGis& e, std::string& errore);
    // "GPKG, 3 features already there", for the terminal.
    std::string Descrizione() const;
    // The files written, --out first.
    std::vector<std::string> File() const;

private:
    struct TImpl;
    std::unique_ptr<TImpl> impl;
};

#endif
