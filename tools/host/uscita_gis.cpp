#include "uscita_gis.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <vector>

#include <cpl_error.h>
#include <cpl_string.h>
#include <gdal_priv.h>
#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>

namespace {

struct TChiudiDs {
    void operator()(GDALDataset* d) const { GDALClose(d); }
};
using TDs = std::unique_ptr<GDALDataset, TChiudiDs>;

void Registra()
{
    static std::once_flag fatto;
    std::call_once(fatto, [] {
        GDALAllRegister();
        // GDAL's messages reach the user inside ours, not on the screen of
        // a running dialog or digitizing session.
        CPLSetErrorHandler(CPLQuietErrorHandler);
    });
}

std::string Motivo()
{
    const char* m = CPLGetLastErrorMsg();
    return m && *m ? std::string(" (") + m + ")" : std::string();
}

bool Esiste(const std::string& p)
{
    struct stat st {};
    return stat(p.c_str(), &st) == 0;
}

std::string Cartella(const std::string& p)
{
    const auto i = p.rfind('/');
    return i == std::string::npos ? "." : i == 0 ? "/" : p.substr(0, i);
}

std::string NomeFile(const std::string& p)
{
    const auto i = p.rfind('/');
    return i == std::string::npos ? p : p.substr(i + 1);
}

std::string Minuscolo(std::string s)
{
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::string Estensione(const std::string& p)
{
    const std::string n = NomeFile(p);
    const auto i = n.rfind('.');
    return i == std::string::npos || i == 0 ? "" : Minuscolo(n.substr(i + 1));
}

bool Vero(GDALDriver* d, const char* voce)
{
    const char* v = d->GetMetadataItem(voce);
    return v && EQUAL(v, "YES");
}

bool Scrivibile(GDALDriver* d) { return d && Vero(d, GDAL_DCAP_VECTOR) && Vero(d, GDAL_DCAP_CREATE); }

// The first driver that writes files with the extension `e`.
GDALDriver* DriverPerEstensione(const std::string& e)
{
    GDALDriverManager* m = GetGDALDriverManager();
    for (int i = 0; i < m->GetDriverCount(); ++i) {
        GDALDriver* d = m->GetDriver(i);
        if (!Scrivibile(d)) continue;
        const char* estensioni = d->GetMetadataItem(GDAL_DMD_EXTENSIONS);
        if (!estensioni) estensioni = d->GetMetadataItem(GDAL_DMD_EXTENSION);
        if (!estensioni) continue;
        const CPLStringList parole(CSLTokenizeString(estensioni));
        for (int k = 0; k < parole.size(); ++k)
            if (Minuscolo(parole[k]) == e) return d;
    }
    return nullptr;
}

bool IsShapefile(const GDALDriver* d) { return d && std::strcmp(d->GetDescription(), "ESRI Shapefile") == 0; }

// Formats written in place with the file's headers synced after each feature.
bool SincronizzaInSitu(const GDALDriver* d)
{
    return IsShapefile(d) || (d && std::strcmp(d->GetDescription(), "CSV") == 0);
}

std::vector<std::string> OpzioniStrato(const GDALDriver* d)
{
    // A CSV file keeps its geometry only as a WKT column.
    if (d && std::strcmp(d->GetDescription(), "CSV") == 0) return {"GEOMETRY=AS_WKT"};
    return {};
}

CPLStringList Opzioni(const std::vector<std::string>& v)
{
    CPLStringList l;
    for (const std::string& s : v) l.AddString(s.c_str());
    return l;
}

struct TCampo {
    const char* nome;
    OGRFieldType tipo;
};
constexpr TCampo campi[] = {{"kind", OFTString},     {"time", OFTString},     {"button", OFTInteger},
                            {"function", OFTString}, {"count_x", OFTInteger}, {"count_y", OFTInteger}};

std::vector<std::string> Contenuto(const std::string& cartella)
{
    std::vector<std::string> nomi;
    if (DIR* d = opendir(cartella.c_str())) {
        while (dirent* voce = readdir(d))
            if (std::strcmp(voce->d_name, ".") != 0 && std::strcmp(voce->d_name, "..") != 0) nomi.push_back(voce->d_name);
        closedir(d);
    }
    return nomi;
}

void Rimuovi(const std::string& cartella)
{
    for (const std::string& n : Contenuto(cartella)) std::remove((cartella + "/" + n).c_str());
    rmdir(cartella.c_str());
}

// Renames every file of the folder `da` into `a`, the one named `ultimo`
// last, and removes `da`.
bool Trasferisci(const std::string& da, const std::string& a, const std::string& ultimo, std::string& errore)
{
    std::vector<std::string> nomi = Contenuto(da);
    std::stable_partition(nomi.begin(), nomi.end(), [&](const std::string& n) { return n != ultimo; });
    bool ok = true;
    for (const std::string& n : nomi) {
        if (std::rename((da + "/" + n).c_str(), (a + "/" + n).c_str()) != 0) {
            errore = "cannot replace " + a + "/" + n + " (" + std::strerror(errno) + ")";
            ok = false;
        }
    }
    Rimuovi(da);
    return ok;
}

}  // namespace

struct TUscitaGis::TImpl {
    TOpzioniGis o;
    GDALDriver* driver = nullptr;
    OGRSpatialReference srs;
    bool conSrs = false;
    // The file, or for a rewritten format its copy in memory; Shapefile
    // lines have a dataset of their own.
    TDs ds, dsLinee;
    OGRLayer* punti = nullptr;
    OGRLayer* linee = nullptr;
    bool transazioni = false;
    bool riscrivi = false;
    GIntBig esistenti = 0;

    bool Driver(std::string& errore);
    bool ApriFile(const std::string& percorso, TDs& dove, std::string& errore);
    bool Strato(GDALDataset& d, const std::string& nome, OGRLayer*& strato, std::string& errore);
    bool Riscrivi(std::string& errore);
};

bool TUscitaGis::TImpl::Driver(std::string& errore)
{
    if (!o.formato.empty()) {
        driver = GetGDALDriverManager()->GetDriverByName(o.formato.c_str());
        if (!Scrivibile(driver)) {
            errore = "GDAL has no vector format " + o.formato + " it can write (ogrinfo --formats lists them)";
            return false;
        }
    } else if (Esiste(o.percorso)) {
        TDs d(GDALDataset::Open(o.percorso.c_str(), GDAL_OF_VECTOR));
        if (!d) {
            errore = o.percorso + " exists and is not a GIS file GDAL reads; it is left alone" + Motivo();
            return false;
        }
        driver = d->GetDriver();
    } else {
        const std::string e = Estensione(o.percorso);
        driver = e.empty() ? GetGDALDriverManager()->GetDriverByName("GPKG") : DriverPerEstensione(e);
        if (!Scrivibile(driver)) {
            errore = "no GDAL format writes ." + e + " files; --format names one (ogrinfo --formats lists them)";
            return false;
        }
    }
    return true;
}

// Opens or creates one file. A format written in place keeps the file open
// for update; any other is read into memory, to be written again whole.
bool TUscitaGis::TImpl::ApriFile(const std::string& percorso, TDs& dove, std::string& errore)
{
    const char* const soloQuesto[] = {driver->GetDescription(), nullptr};
    if (!Esiste(percorso)) {
        TDs nuovo(driver->Create(percorso.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
        if (!nuovo) {
            errore = "cannot create " + percorso + Motivo();
            return false;
        }
        if (nuovo->TestCapability(ODsCTransactions) || SincronizzaInSitu(driver)) {
            transazioni = nuovo->TestCapability(ODsCTransactions);
            dove = std::move(nuovo);
            return true;
        }
        nuovo.reset();
        riscrivi = true;
        dove.reset(GetGDALDriverManager()->GetDriverByName("Memory")->Create("", 0, 0, 0, GDT_Unknown, nullptr));
        return dove != nullptr;
    }
    TDs d(GDALDataset::Open(percorso.c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE, soloQuesto));
    if (d && (d->TestCapability(ODsCTransactions) || SincronizzaInSitu(driver))) {
        transazioni = d->TestCapability(ODsCTransactions);
        dove = std::move(d);
        return true;
    }
    d.reset(GDALDataset::Open(percorso.c_str(), GDAL_OF_VECTOR, soloQuesto));
    if (!d) {
        errore = percorso + " exists and is not a " + driver->GetDescription() +
                 " file GDAL reads; it is left alone" + Motivo();
        return false;
    }
    riscrivi = true;
    dove.reset(GetGDALDriverManager()->GetDriverByName("Memory")->Create("", 0, 0, 0, GDT_Unknown, nullptr));
    if (!dove) return false;
    for (int i = 0; i < d->GetLayerCount(); ++i) {
        OGRLayer* l = d->GetLayer(i);
        if (!dove->CopyLayer(l, l->GetName())) {
            errore = "cannot read the layer " + std::string(l->GetName()) + " of " + percorso + Motivo();
            return false;
        }
    }
    return true;
}

bool TUscitaGis::TImpl::Strato(GDALDataset& d, const std::string& nome, OGRLayer*& strato, std::string& errore)
{
    strato = d.GetLayerByName(nome.c_str());
    // A format of one layer a file (GeoJSON, CSV, DXF...) names it by itself;
    // what a reader shows beside it (DXF's blocks) is not written back.
    if (!strato && d.GetLayerCount() > 0 && !Vero(driver, GDAL_DCAP_MULTIPLE_VECTOR_LAYERS)) strato = d.GetLayer(0);
    if (strato) {
        esistenti += std::max<GIntBig>(0, strato->GetFeatureCount());
        const OGRSpatialReference* suo = strato->GetSpatialRef();
        if (conSrs && suo && !suo->IsSame(&srs)) {
            const char* nomeSuo = suo->GetName();
            errore = "the layer " + std::string(strato->GetName()) + " of " + o.percorso + " is in " +
                     (nomeSuo ? nomeSuo : "another CRS") + ", not " + o.crs;
            return false;
        }
    } else {
        // In memory the options wait for the copy to the file.
        CPLStringList opzioni = riscrivi ? CPLStringList() : Opzioni(OpzioniStrato(driver));
        strato = d.CreateLayer(nome.c_str(), conSrs ? &srs : nullptr, wkbUnknown, opzioni.List());
        if (!strato) {
            errore = "cannot create the layer " + nome + " in " + o.percorso + Motivo();
            return false;
        }
    }
    for (const TCampo& c : campi) {
        if (strato->GetLayerDefn()->GetFieldIndex(c.nome) >= 0) continue;
        OGRFieldDefn f(c.nome, c.tipo);
        if (strato->CreateField(&f) != OGRERR_NONE) {
            errore = "cannot add the field " + std::string(c.nome) + " to " + o.percorso + Motivo();
            return false;
        }
    }
    return true;
}

bool TUscitaGis::TImpl::Riscrivi(std::string& errore)
{
    const std::string cartella = Cartella(o.percorso), nome = NomeFile(o.percorso);
    std::string modello = cartella + "/." + nome + ".XXXXXX";
    if (!mkdtemp(&modello[0])) {
        errore = "cannot write beside " + o.percorso + " (" + std::strerror(errno) + ")";
        return false;
    }
    bool ok = true;
    {
        TDs nuovo(driver->Create((modello + "/" + nome).c_str(), 0, 0, 0, GDT_Unknown, nullptr));
        ok = nuovo != nullptr;
        CPLStringList opzioni = Opzioni(OpzioniStrato(driver));
        const bool tutti = Vero(driver, GDAL_DCAP_MULTIPLE_VECTOR_LAYERS);
        for (int i = 0; ok && i < ds->GetLayerCount(); ++i) {
            OGRLayer* l = ds->GetLayer(i);
            if (tutti || l == punti) ok = nuovo->CopyLayer(l, l->GetName(), opzioni.List()) != nullptr;
        }
        if (!ok) errore = "cannot write " + o.percorso + Motivo();
    }
    if (!ok) {
        Rimuovi(modello);
        return false;
    }
    return Trasferisci(modello, cartella, nome, errore);
}

TUscitaGis::TUscitaGis() : impl(std::make_unique<TImpl>()) {}
TUscitaGis::~TUscitaGis() = default;

bool TUscitaGis::Disponibile() { return true; }

bool TUscitaGis::Apri(const TOpzioniGis& o, std::string& errore)
{
    Registra();
    impl = std::make_unique<TImpl>();
    TImpl& m = *impl;
    m.o = o;
    if (!o.crs.empty()) {
        if (m.srs.SetFromUserInput(o.crs.c_str()) != OGRERR_NONE) {
            errore = "--crs " + o.crs + " is not a coordinate reference system OGR knows";
            return false;
        }
        m.srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
        m.conSrs = true;
    }
    if (!m.Driver(errore) || !m.ApriFile(o.percorso, m.ds, errore)) return false;
    if (IsShapefile(m.driver)) {
        // One geometry type a file: points here, lines beside.
        const std::string base = o.percorso.substr(0, o.percorso.size() - (Estensione(o.percorso).empty() ? 0 : 4));
        if (!m.Strato(*m.ds, NomeFile(base), m.punti, errore) ||
            !m.ApriFile(base + "_lines.shp", m.dsLinee, errore) ||
            !m.Strato(*m.dsLinee, NomeFile(base) + "_lines", m.linee, errore))
            return false;
    } else {
        if (!m.Strato(*m.ds, o.strato, m.punti, errore)) return false;
        m.linee = m.punti;
    }
    if (m.riscrivi) return m.Riscrivi(errore);
    m.ds->FlushCache();
    return true;
}

bool TUscitaGis::Scrivi(const TElementoGis& e, std::string& errore)
{
    TImpl& m = *impl;
    const bool punto = e.genere == TGenere::punto;
    OGRLayer* strato = punto ? m.punti : m.linee;
    GDALDataset& d = punto || !m.dsLinee ? *m.ds : *m.dsLinee;
    if (!strato) {
        errore = "no GIS output is open";
        return false;
    }
    OGRFeature f(strato->GetLayerDefn());
    f.SetField("kind", NomeGenere(e.genere));
    f.SetField("time", e.ora.c_str());
    f.SetField("button", e.bottone);
    f.SetField("function", NomeCodiceFunzione(e.funzione));
    f.SetField("count_x", static_cast<int>(e.x));
    f.SetField("count_y", static_cast<int>(e.y));
    if (punto) {
        f.SetGeometry(std::make_unique<OGRPoint>(e.vertici.at(0).est, e.vertici.at(0).nord).get());
    } else {
        OGRLineString linea;
        for (const TVertice& v : e.vertici) linea.addPoint(v.est, v.nord);
        f.SetGeometry(&linea);
    }
    if (m.transazioni && d.StartTransaction() != OGRERR_NONE) {
        errore = "cannot write to " + m.o.percorso + Motivo();
        return false;
    }
    if (strato->CreateFeature(&f) != OGRERR_NONE) {
        if (m.transazioni) d.RollbackTransaction();
        errore = "cannot write a feature to " + m.o.percorso + Motivo();
        return false;
    }
    if (m.transazioni) {
        if (d.CommitTransaction() != OGRERR_NONE) {
            errore = "cannot commit a feature to " + m.o.percorso + Motivo();
            return false;
        }
        return true;
    }
    if (m.riscrivi) return m.Riscrivi(errore);
    strato->SyncToDisk();
    d.FlushCache();
    return true;
}

std::string TUscitaGis::Descrizione() const
{
    if (!impl->driver) return {};
    return std::string(impl->driver->GetDescription()) + ", " + std::to_string(impl->esistenti) +
           " features already there";
}
