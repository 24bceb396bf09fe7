// Digitizing into a GIS file, read back with GDAL in each format the host
// is tried with.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
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
    const char* nome;       // GDAL's
    const char* estensione;
    bool crs, attributi;    // the format carries them
    bool aggiunge;          // GDAL writes back what it reads
};

void PrintTo(const TFormato& f, std::ostream* os) { *os << f.nome; }

class UscitaGisTest : public ::testing::TestWithParam<TFormato> {
protected:
    void SetUp() override { ASSERT_FALSE(temporanea.percorso.empty()); }

    // Every feature of the files written to `percorso`, as WKT, with the
    // function that made it and whether the layer is in EPSG:3003.
    std::vector<std::string> Leggi(const std::string& percorso, bool& crs)
    {
        std::vector<std::string> v;
        crs = true;
        std::vector<std::string> files{percorso};
        if (std::string(GetParam().nome) == "ESRI Shapefile") files.push_back(cartella + "/carta_lines.shp");
        for (const std::string& f : files) {
            std::unique_ptr<GDALDataset> ds(GDALDataset::Open(f.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY));
            if (!ds) {
                ADD_FAILURE() << "GDAL cannot read " << f;
                continue;
            }
            for (OGRLayer* l : ds->GetLayers()) {
                const OGRSpatialReference* s = l->GetSpatialRef();
                crs = crs && s && s->GetAuthorityCode(nullptr) && std::string(s->GetAuthorityCode(nullptr)) == "3003";
                for (auto& f : *l) {
                    char* wkt = nullptr;
                    f->GetGeometryRef()->exportToWkt(&wkt);
                    const int i = f->GetFieldIndex("function");
                    v.push_back(std::string(wkt) + (i >= 0 ? std::string(" ") + f->GetFieldAsString(i) : ""));
                    CPLFree(wkt);
                }
            }
        }
        std::sort(v.begin(), v.end());
        return v;
    }

    TCartellaTemporanea temporanea;
    const std::string cartella = temporanea.percorso;
};

TElementoGis Elemento(TGenere g, std::vector<TVertice> v, int funzione)
{
    TElementoGis e;
    e.genere = g, e.vertici = std::move(v), e.ora = "2026-11-23T10:00:00.000Z", e.bottone = 2, e.funzione = funzione;
    e.x = 100, e.y = 200;
    return e;
}

TEST_P(UscitaGisTest, EachFeatureIsThereWhenWrittenAndTheFileIsAppendedToOrLeftAlone)
{
    const TFormato& f = GetParam();
    const std::string percorso = cartella + "/carta." + f.estensione;
    const TOpzioniGis o{percorso, "", "EPSG:3003", "digitized"};
    std::string errore;
    std::vector<std::string> attesi;
    {
        TUscitaGis u;
        ASSERT_TRUE(u.Apri(o, errore)) << errore;
        const TElementoGis elementi[] = {
            Elemento(TGenere::punto, {{1500100.5, 5000200.25}}, funzConferma),
            Elemento(TGenere::linea, {{1500000, 5000000}, {1500010, 5000020}}, funzLineaFineEnt),
            Elemento(TGenere::polilinea, {{1, 2}, {3, 4}, {5, 7}}, funzPolilineaDisLib)};
        for (const TElementoGis& e : elementi) {
            ASSERT_TRUE(u.Scrivi(e, errore)) << errore;
            bool crs = false;
            // Written is readable: nothing waits for the end of the run.
            EXPECT_EQ(Leggi(percorso, crs).size(), attesi.size() + 1);
            attesi.push_back("");
        }
    }
    attesi = {"LINESTRING (1 2,3 4,5 7)", "LINESTRING (1500000 5000000,1500010 5000020)", "POINT (1500100.5 5000200.25)"};
    if (f.attributi) {
        attesi[0] += " funzPolilineaDisLib", attesi[1] += " funzLineaFineEnt", attesi[2] += " funzConferma";
    }
    bool crs = false;
    std::vector<std::string> letti = Leggi(percorso, crs);
    EXPECT_EQ(letti, attesi);
    if (f.crs) {
        EXPECT_TRUE(crs);
    }

    TUscitaGis ancora;
    if (!f.aggiunge) {
        EXPECT_FALSE(ancora.Apri(o, errore)) << "refused, not overwritten";
        EXPECT_EQ(Leggi(percorso, crs).size(), 3u);
        return;
    }
    ASSERT_TRUE(ancora.Apri(o, errore)) << errore;
    EXPECT_NE(ancora.Descrizione().find("3 features already there"), std::string::npos) << ancora.Descrizione();
    ASSERT_TRUE(ancora.Scrivi(Elemento(TGenere::punto, {{7, 8}}, funzConferma), errore)) << errore;
    EXPECT_EQ(Leggi(percorso, crs).size(), 4u);
}

INSTANTIATE_TEST_SUITE_P(Formati, UscitaGisTest,
                         ::testing::Values(TFormato{"GPKG", "gpkg", true, true, true},
                                           TFormato{"GeoJSON", "geojson", true, true, true},
                                           TFormato{"ESRI Shapefile", "shp", true, true, true},
                                           TFormato{"CSV", "csv", false, true, true},
                                           TFormato{"DXF", "dxf", false, false, false}),
                         [](const ::testing::TestParamInfo<TFormato>& i) {
                             return std::string(i.param.estensione);
                         });

// What is not a GIS file, or is in another CRS, is left alone.
TEST(UscitaGis, RefusesWhatItWouldSpoil)
{
    TCartellaTemporanea temporanea;
    ASSERT_FALSE(temporanea.percorso.empty());
    const std::string cartella = temporanea.percorso, testo = cartella + "/note.gpkg";
    std::ofstream(testo) << "not a map\n";
    std::string errore;
    TUscitaGis u;
    EXPECT_FALSE(u.Apri({testo, "", "", "digitized"}, errore));
    EXPECT_NE(errore.find("is left alone"), std::string::npos) << errore;
    std::ifstream in(testo);
    std::string riga;
    std::getline(in, riga);
    EXPECT_EQ(riga, "not a map");

    const std::string carta = cartella + "/carta.gpkg";
    ASSERT_TRUE(TUscitaGis().Apri({carta, "", "EPSG:3003", "digitized"}, errore)) << errore;
    EXPECT_FALSE(TUscitaGis().Apri({carta, "", "EPSG:4326", "digitized"}, errore));
    EXPECT_NE(errore.find("not EPSG:4326"), std::string::npos) << errore;
    EXPECT_FALSE(TUscitaGis().Apri({cartella + "/x.gpkg", "", "EPSG:nonsense", "d"}, errore));
    EXPECT_FALSE(TUscitaGis().Apri({cartella + "/x.gpkg", "NoSuchFormat", "", "d"}, errore));
}

#endif

}  // namespace
