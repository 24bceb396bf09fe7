// GIS output read back with GDAL in each format: layers, fields, appending, a failed write.
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "digit.h"
#include "support/cartella_temporanea.h"
#include "uscita_gis.h"

#ifdef VELMARIN_CON_GDAL
#include <gdal_priv.h>
#include <ogrsf_frmts.h>
#endif

namespace {

#ifdef VELMARIN_CON_GDAL

struct TFormato {
    const char* estensione;
    bool crs;      // the format carries it
    bool dataOra;  // the time reads back as a date-time
    // Where points, lines and polygons are read back: file (beside carta.*)
    // and layer ("" the file's only one).
    const char* file[3];
    const char* strati[3];
};

void PrintTo(const TFormato& f, std::ostream* os) { *os << f.estensione; }

// One layer as GDAL reads it back.
struct TStratoLetto {
    bool aperto = false;
    OGRwkbGeometryType geometria = wkbUnknown;
    OGRFieldType tipoOra = OFTMaxType;
    bool epsg3003 = false;
    // "WKT | kind | function | calib_id | button count_x count_y | time".
    std::vector<std::string> righe;
};

// The time as "2026-11-23T10:00:00.250Z" from a date-time or text; no Z unless it says UTC.
std::string Ora(OGRFeature& f, int i)
{
    int a = 0, m = 0, g = 0, h = 0, mi = 0, z = 0;
    float s = 0;
    double sd = 0;
    char fuso[8] = "";
    if (f.GetFieldDefnRef(i)->GetType() == OFTDateTime) {
        f.GetFieldAsDateTime(i, &a, &m, &g, &h, &mi, &s, &z);
        sd = s;
    } else if (std::sscanf(f.GetFieldAsString(i), "%d%*c%d%*c%d%*c%d:%d:%lf%7s", &a, &m, &g, &h, &mi, &sd, fuso) < 6) {
        return std::string("unreadable: ") + f.GetFieldAsString(i);
    }
    const bool utc = z == 100 || !std::strcmp(fuso, "Z") || !std::strcmp(fuso, "+00") || !std::strcmp(fuso, "+00:00");
    char b[64];
    std::snprintf(b, sizeof b, "%04d-%02d-%02dT%02d:%02d:%06.3f%s", a, m, g, h, mi, sd, utc ? "Z" : "");
    return b;
}

TStratoLetto Leggi(const std::string& percorso, const std::string& nome)
{
    TStratoLetto r;
    std::unique_ptr<GDALDataset> ds(GDALDataset::Open(percorso.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY));
    OGRLayer* l = !ds ? nullptr : nome.empty() ? ds->GetLayer(0) : ds->GetLayerByName(nome.c_str());
    if (!l) return r;
    r.aperto = true;
    r.geometria = wkbFlatten(l->GetGeomType());
    const OGRSpatialReference* s = l->GetSpatialRef();
    r.epsg3003 = s && s->GetAuthorityCode(nullptr) && std::string(s->GetAuthorityCode(nullptr)) == "3003";
    const int ora = l->GetLayerDefn()->GetFieldIndex("time");
    if (ora >= 0) r.tipoOra = l->GetLayerDefn()->GetFieldDefn(ora)->GetType();
    for (auto& f : *l) {
        char* wkt = nullptr;
        if (f->GetGeometryRef()) f->GetGeometryRef()->exportToWkt(&wkt);
        // GDAL hands out numbers as text in one buffer: each is copied first.
        std::string riga = wkt ? wkt : "no geometry";
        for (const char* c : {" | kind", " | function", " | calib_id", " | button", " count_x", " count_y"})
            riga += std::string(c, c[1] == '|' ? 3 : 1) + f->GetFieldAsString(c + (c[1] == '|' ? 3 : 1));
        r.righe.push_back(riga + " | " + (ora >= 0 ? Ora(*f, ora) : "no time"));
        CPLFree(wkt);
    }
    return r;
}

TElementoGis Elemento(TGenere g, std::vector<TVertice> v, int funzione, int bottone)
{
    TElementoGis e;
    e.genere = g, e.vertici = std::move(v), e.funzione = funzione, e.bottone = bottone;
    e.x = 100 + bottone, e.y = -200;
    // 2026-11-23T10:00:00.250Z
    e.ora = std::chrono::system_clock::time_point(std::chrono::milliseconds(1795428000250LL));
    e.calibrazione = "cal-2026-11-23T09:58:01.007Z";
    return e;
}

class UscitaGisTest : public ::testing::TestWithParam<TFormato> {
protected:
    void SetUp() override { ASSERT_FALSE(cartella.empty()); }
    std::string Percorso(int k = 0) const { return cartella + "/" + GetParam().file[k]; }
    TStratoLetto Strato(int k) const { return Leggi(Percorso(k), GetParam().strati[k]); }
    TOpzioniGis Opzioni() const { return {Percorso(), "", "EPSG:3003", "carta"}; }

    TCartellaTemporanea temporanea;
    const std::string cartella = temporanea.percorso;
};

TEST_P(UscitaGisTest, EachGeometryHasItsLayerAndEveryFieldReadsBackAsWritten)
{
    const TFormato& f = GetParam();
    std::string errore;
    {
        TUscitaGis u;
        ASSERT_TRUE(u.Apri(Opzioni(), errore)) << errore;
        const TElementoGis elementi[] = {
            Elemento(TGenere::punto, {{1500100.5, 5000200.25}}, funzConferma, 1),
            Elemento(TGenere::linea, {{1500000, 5000000}, {1500010, 5000020}}, funzLineaFineEnt, 3),
            Elemento(TGenere::polilinea, {{1, 2}, {3, 4}, {5, 7}}, funzPolilineaDisLib, 5),
            Elemento(TGenere::poligono, {{0, 0}, {0, 10}, {10, 10}, {0, 0}}, funzPolilineaFineEnt, 2)};
        int letti = 0;
        for (const TElementoGis& e : elementi) {
            ASSERT_TRUE(u.Scrivi(e, errore)) << errore;
            // Written is readable: nothing waits for the end of the run.
            int ora = 0;
            for (int k = 0; k < 3; ++k) ora += static_cast<int>(Strato(k).righe.size());
            EXPECT_EQ(ora, ++letti);
        }
    }
    const char* const ora = "2026-11-23T10:00:00.250Z";
    const std::string coda = std::string(" | cal-2026-11-23T09:58:01.007Z | ");
    const std::vector<std::string> attesi[3] = {
        {"POINT (1500100.5 5000200.25) | point | Conferma" + coda + "1 101 -200 | " + ora},
        {"LINESTRING (1500000 5000000,1500010 5000020) | line | Inizia Linea - Fine Ent." + coda + "3 103 -200 | " + ora,
         "LINESTRING (1 2,3 4,5 7) | polyline | Inizia Polilinea - Dis. Lib." + coda + "5 105 -200 | " + ora},
        {"POLYGON ((0 0,0 10,10 10,0 0)) | polygon | Inizia Polilinea - Fine Ent." + coda + "2 102 -200 | " + ora}};
    const OGRwkbGeometryType geometrie[3] = {wkbPoint, wkbLineString, wkbPolygon};
    for (int k = 0; k < 3; ++k) {
        const TStratoLetto s = Strato(k);
        ASSERT_TRUE(s.aperto) << f.file[k] << " " << f.strati[k];
        EXPECT_EQ(s.righe, attesi[k]);
        if (std::string(f.estensione) != "csv") {
            EXPECT_EQ(s.geometria, geometrie[k]) << f.file[k];
        }
        if (f.crs) {
            EXPECT_TRUE(s.epsg3003) << f.file[k];
        }
        if (f.dataOra) {
            EXPECT_EQ(s.tipoOra, OFTDateTime) << f.file[k];
        }
    }

    TUscitaGis ancora;
    ASSERT_TRUE(ancora.Apri(Opzioni(), errore)) << errore;
    EXPECT_NE(ancora.Descrizione().find("4 features already there"), std::string::npos) << ancora.Descrizione();
    ASSERT_TRUE(ancora.Scrivi(Elemento(TGenere::punto, {{7, 8}}, funzConferma, 1), errore)) << errore;
    EXPECT_EQ(Strato(0).righe.size(), 2u) << "appended to";
}

// A full disk (a file size limit): the failed write names the file, which holds all before it.
TEST_P(UscitaGisTest, AWriteThatFailsLeavesEveryFeatureBeforeItReadable)
{
    std::string errore;
    auto u = std::make_unique<TUscitaGis>();
    ASSERT_TRUE(u->Apri(Opzioni(), errore)) << errore;
    ASSERT_TRUE(u->Scrivi(Elemento(TGenere::punto, {{1, 1}}, funzConferma, 1), errore)) << errore;
    struct stat st {};
    ASSERT_EQ(stat(Percorso().c_str(), &st), 0);
    const std::set<std::filesystem::path> file(std::filesystem::directory_iterator(cartella), {});
    rlimit prima{};
    getrlimit(RLIMIT_FSIZE, &prima);
    void (*segnale)(int) = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit stretto{static_cast<rlim_t>(st.st_size) + 512, prima.rlim_max};
    setrlimit(RLIMIT_FSIZE, &stretto);
    int scritti = 1;
    while (scritti < 3000 && u->Scrivi(Elemento(TGenere::punto, {{1.0 * scritti, 2}}, funzConferma, 1), errore))
        ++scritti;
    u.reset();  // closed on the full disk, as a session that stops
    setrlimit(RLIMIT_FSIZE, &prima);
    std::signal(SIGXFSZ, segnale);
    ASSERT_LT(scritti, 3000) << "no write failed";
    EXPECT_NE(errore.find(Percorso()), std::string::npos) << errore;
    EXPECT_EQ(Strato(0).righe.size(), static_cast<std::size_t>(scritti));
    EXPECT_EQ(std::set<std::filesystem::path>(std::filesystem::directory_iterator(cartella), {}), file)
        << "no half-written copy left beside them";
}

INSTANTIATE_TEST_SUITE_P(
    Formati, UscitaGisTest,
    ::testing::Values(
        TFormato{"gpkg", true, true, {"carta.gpkg", "carta.gpkg", "carta.gpkg"}, {"carta", "carta_lines", "carta_polygons"}},
        TFormato{"geojson", true, true, {"carta.geojson", "carta_lines.geojson", "carta_polygons.geojson"}, {"", "", ""}},
        TFormato{"shp", true, false, {"carta.shp", "carta_lines.shp", "carta_polygons.shp"}, {"", "", ""}},
        TFormato{"csv", false, false, {"carta.csv", "carta_lines.csv", "carta_polygons.csv"}, {"", "", ""}}),
    [](const ::testing::TestParamInfo<TFormato>& i) { return std::string(i.param.estensione); });

// A file of one layer renamed since it was written (GeoJSON keeps the layer's
// old name inside) is appended to, not given a second layer.
TEST(UscitaGis, ARenamedFileOfOneLayerIsAppendedTo)
{
    TCartellaTemporanea temporanea;
    const std::string prima = temporanea.percorso + "/carta.geojson", dopo = temporanea.percorso + "/pozzi.geojson";
    std::string errore;
    const auto UnPunto = [&](const std::string& percorso) {
        TUscitaGis u;
        return u.Apri({percorso, "", "EPSG:3003", "carta"}, errore) &&
               u.Scrivi(Elemento(TGenere::punto, {{1, 2}}, funzConferma, 1), errore);
    };
    ASSERT_TRUE(UnPunto(prima)) << errore;
    ASSERT_EQ(std::rename(prima.c_str(), dopo.c_str()), 0);
    ASSERT_TRUE(UnPunto(dopo)) << errore;
    std::unique_ptr<GDALDataset> ds(GDALDataset::Open(dopo.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY));
    ASSERT_TRUE(ds);
    EXPECT_EQ(ds->GetLayerCount(), 1);
    EXPECT_EQ(Leggi(dopo, "").righe.size(), 2u);
}

// Not a GIS file, another CRS, not writable: refused before any work, untouched.

TEST(UscitaGis, RefusesWhatItWouldSpoilBeforeAnyWork)
{
    TCartellaTemporanea temporanea;
    ASSERT_FALSE(temporanea.percorso.empty());
    const std::string c = temporanea.percorso;
    std::ofstream(c + "/note.gpkg") << "not a map\n";
    std::string errore;
    ASSERT_TRUE(TUscitaGis().Apri({c + "/carta.gpkg", "", "EPSG:3003", "d"}, errore)) << errore;
    const struct {
        TOpzioniGis o;
        const char* motivo;
    } casi[] = {
        {{c + "/note.gpkg", "", "", "d"}, "is left alone"},
        {{c + "/carta.gpkg", "", "EPSG:4326", "d"}, "not EPSG:4326"},
        {{c + "/x.gpkg", "", "EPSG:nonsense", "d"}, "not a coordinate reference system"},
        {{c + "/x.gpkg", "NoSuchFormat", "", "d"}, "no vector format NoSuchFormat"},
        {{c + "/x.nosuchextension", "", "", "d"}, "no GDAL format writes .nosuchextension"},
        {{c + "/missing/x.gpkg", "", "", "d"}, "does not exist"},
        {{c + "/note.gpkg/x.geojson", "", "", "d"}, "is not a folder"},
    };
    for (const auto& k : casi) {
        errore.clear();
        EXPECT_FALSE(TUscitaGis::Verifica(k.o, errore)) << k.o.percorso;
        EXPECT_NE(errore.find(k.motivo), std::string::npos) << errore;
        errore.clear();
        EXPECT_FALSE(TUscitaGis().Apri(k.o, errore)) << k.o.percorso;
        EXPECT_NE(errore.find(k.motivo), std::string::npos) << errore;
    }
    std::ifstream in(c + "/note.gpkg");
    std::string riga;
    std::getline(in, riga);
    EXPECT_EQ(riga, "not a map");
    struct stat st {};
    EXPECT_TRUE(TUscitaGis::Verifica({c + "/new.geojson", "", "EPSG:3003", "d"}, errore)) << errore;
    EXPECT_NE(stat((c + "/new.geojson").c_str(), &st), 0) << "checking creates nothing";
}

#endif

}  // namespace
