#include "uscita_gis.h"

#include "ora_utc.h"
#include "scrittura_file.h"

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

// The three layers, by geometry: where a kind of feature goes.
enum TTipoStrato { stratoPunti, stratoLinee, stratoPoligoni, numStrati };
constexpr const char* suffissi[numStrati] = {"", "_lines", "_polygons"};
constexpr OGRwkbGeometryType geometrie[numStrati] = {wkbPoint, wkbLineString, wkbPolygon};

TTipoStrato StratoDi(TGenere g)
{
    return g == TGenere::punto ? stratoPunti : g == TGenere::poligono ? stratoPoligoni : stratoLinee;
}

std::unique_ptr<OGRGeometry> Geometria(const TElementoGis& e)
{
    if (e.genere == TGenere::punto) return std::make_unique<OGRPoint>(e.vertici.at(0).est, e.vertici.at(0).nord);
    auto linea = std::make_unique<OGRLineString>();
    for (const TVertice& v : e.vertici) linea->addPoint(v.est, v.nord);
    if (e.genere != TGenere::poligono) return linea;
    auto anello = std::make_unique<OGRLinearRing>();
    anello->addSubLineString(linea.get());
    anello->closeRings();
    auto poligono = std::make_unique<OGRPolygon>();
    poligono->addRingDirectly(anello.release());
    return poligono;
}

// A format whose fields cannot hold a date with its time (Shapefile's date
// has no hours) gets the time as ISO 8601 text.
bool ConDataOra(GDALDriver* d)
{
    const char* tipi = d->GetMetadataItem(GDAL_DMD_CREATIONFIELDDATATYPES);
    return !tipi || std::strstr(tipi, "DateTime");
}

struct TCampo {
    const char* nome;
    OGRFieldType tipo;
};

std::vector<TCampo> Campi(GDALDriver* d)
{
    return {{"kind", OFTString},     {"time", ConDataOra(d) ? OFTDateTime : OFTString},
            {"button", OFTInteger},  {"function", OFTString},
            {"calib_id", OFTString}, {"count_x", OFTInteger},
            {"count_y", OFTInteger}};
}

void Attributi(OGRFeature& f, const TElementoGis& e)
{
    f.SetField("kind", NomeGenere(e.genere));
    const int i = f.GetFieldIndex("time");
    if (f.GetFieldDefnRef(i)->GetType() == OFTDateTime) {
        int ms = 0;
        const std::tm u = OraUtc(e.ora, ms);
        f.SetField(i, u.tm_year + 1900, u.tm_mon + 1, u.tm_mday, u.tm_hour, u.tm_min,
                   static_cast<float>(u.tm_sec + ms / 1000.0), 100);  // 100: UTC
    } else {
        f.SetField(i, TestoOra(e.ora).c_str());
    }
    f.SetField("button", e.bottone);
    f.SetField("function", NomeCodiceFunzione(e.funzione));
    f.SetField("calib_id", e.calibrazione.c_str());
    f.SetField("count_x", static_cast<int>(e.x));
    f.SetField("count_y", static_cast<int>(e.y));
}

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

// One file written: the whole output in a format of many layers, one layer
// of it otherwise.
struct TFileGis {
    std::string percorso;
    TDs ds;  // the file, or for a rewritten format its copy in memory
    bool riscrivi = false;  // rewritten from its copy after each feature; else a transaction each
};

struct TUscitaGis::TImpl {
    TOpzioniGis o;
    GDALDriver* driver = nullptr;
    OGRSpatialReference srs;
    bool conSrs = false;
    bool unoPerFile = false;  // a file for each layer
    std::vector<TFileGis> file;
    OGRLayer* strati[numStrati] = {};
    std::size_t fileDi[numStrati] = {};
    GIntBig esistenti = 0;

    bool Controlla(std::string& errore);
    bool Srs(std::string& errore);
    bool Driver(std::string& errore);
    std::string Percorso(int tipo) const;
    std::string NomeStrato(int tipo) const;
    bool ApriFile(TFileGis& f, std::string& errore);
    OGRLayer* Esistente(GDALDataset& d, const std::string& nome) const;
    bool StessoSrs(OGRLayer& strato, const std::string& percorso, std::string& errore) const;
    bool Strato(int tipo, std::string& errore);
    bool Riscrivi(TFileGis& f, std::string& errore);
    bool Copiato(OGRLayer* l) const;
    bool Riscrivibile(GDALDataset& d, const std::string& percorso, std::string& errore) const;
    bool Completa(const std::string& copia, TFileGis& f, std::string& errore);
};

bool TUscitaGis::TImpl::Srs(std::string& errore)
{
    if (o.crs.empty()) return true;
    if (srs.SetFromUserInput(o.crs.c_str()) != OGRERR_NONE) {
        errore = "--crs " + o.crs + " is not a coordinate reference system OGR knows (EPSG:3003, say)";
        return false;
    }
    srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    conSrs = true;
    return true;
}

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
    // Shapefile, DXF and DGN say they hold many layers, but of one geometry
    // type, or of one layer of entities.
    const std::string nome = driver->GetDescription();
    unoPerFile = nome == "ESRI Shapefile" || nome == "DXF" || nome == "DGN" ||
                 !Vero(driver, GDAL_DCAP_MULTIPLE_VECTOR_LAYERS);
    return true;
}

// map.geojson, map_lines.geojson, map_polygons.geojson.
std::string TUscitaGis::TImpl::Percorso(int tipo) const
{
    if (!unoPerFile || tipo == stratoPunti) return o.percorso;
    const std::string e = Estensione(o.percorso);
    return o.percorso.substr(0, o.percorso.size() - (e.empty() ? 0 : e.size() + 1)) + suffissi[tipo] +
           (e.empty() ? "" : "." + e);
}

std::string TUscitaGis::TImpl::NomeStrato(int tipo) const
{
    if (!unoPerFile) return o.strato + suffissi[tipo];
    const std::string n = NomeFile(Percorso(tipo)), e = Estensione(n);
    return n.substr(0, n.size() - (e.empty() ? 0 : e.size() + 1));
}

// Opens or creates one file. A format written in place keeps the file open
// for update; any other is read into memory, to be written again whole.
bool TUscitaGis::TImpl::ApriFile(TFileGis& f, std::string& errore)
{
    const char* const soloQuesto[] = {driver->GetDescription(), nullptr};
    if (!Esiste(f.percorso)) {
        CPLStringList opzioni;
        // GeoPackage keeps a count of features beside them, which GDAL
        // writes when the file closes: after a COMMIT that the disk refused
        // it counted the feature that is not there. Readers count the rows.
        if (std::strcmp(driver->GetDescription(), "GPKG") == 0) opzioni.AddString("ADD_GPKG_OGR_CONTENTS=NO");
        TDs nuovo(driver->Create(f.percorso.c_str(), 0, 0, 0, GDT_Unknown, opzioni.List()));
        if (!nuovo) {
            errore = "cannot create " + f.percorso + Motivo();
            return false;
        }
        if (nuovo->TestCapability(ODsCTransactions)) {
            f.ds = std::move(nuovo);
            return true;
        }
        nuovo.reset();
        f.riscrivi = true;
        f.ds.reset(GetGDALDriverManager()->GetDriverByName("Memory")->Create("", 0, 0, 0, GDT_Unknown, nullptr));
        return f.ds != nullptr;
    }
    TDs d(GDALDataset::Open(f.percorso.c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE, soloQuesto));
    if (d && d->TestCapability(ODsCTransactions)) {
        f.ds = std::move(d);
        return true;
    }
    d.reset(GDALDataset::Open(f.percorso.c_str(), GDAL_OF_VECTOR, soloQuesto));
    if (!d) {
        errore = f.percorso + " exists and is not a " + driver->GetDescription() +
                 " file GDAL reads; it is left alone" + Motivo();
        return false;
    }
    if (!Riscrivibile(*d, f.percorso, errore)) return false;
    f.riscrivi = true;
    f.ds.reset(GetGDALDriverManager()->GetDriverByName("Memory")->Create("", 0, 0, 0, GDT_Unknown, nullptr));
    if (!f.ds) return false;
    for (int i = 0; i < d->GetLayerCount(); ++i) {
        OGRLayer* l = d->GetLayer(i);
        if (!f.ds->CopyLayer(l, l->GetName())) {
            errore = "cannot read the layer " + std::string(l->GetName()) + " of " + f.percorso + Motivo();
            return false;
        }
    }
    return true;
}

// A format of one layer a file (GeoJSON, CSV, DXF...) names it by itself;
// what a reader shows beside it (DXF's blocks) is not written back.
OGRLayer* TUscitaGis::TImpl::Esistente(GDALDataset& d, const std::string& nome) const
{
    OGRLayer* l = d.GetLayerByName(nome.c_str());
    if (!l && d.GetLayerCount() > 0 && unoPerFile) l = d.GetLayer(0);
    return l;
}

bool TUscitaGis::TImpl::StessoSrs(OGRLayer& strato, const std::string& percorso, std::string& errore) const
{
    const OGRSpatialReference* suo = strato.GetSpatialRef();
    if (!conSrs || !suo || suo->IsSame(&srs)) return true;
    const char* nomeSuo = suo->GetName();
    errore = "the layer " + std::string(strato.GetName()) + " of " + percorso + " is in " +
             (nomeSuo ? nomeSuo : "another CRS") + ", not " + o.crs;
    return false;
}

bool TUscitaGis::TImpl::Strato(int tipo, std::string& errore)
{
    TFileGis& f = file[fileDi[tipo]];
    const std::string nome = NomeStrato(tipo);
    OGRLayer*& strato = strati[tipo];
    strato = Esistente(*f.ds, nome);
    if (strato) {
        esistenti += std::max<GIntBig>(0, strato->GetFeatureCount());
        if (!StessoSrs(*strato, f.percorso, errore)) return false;
    } else {
        // In memory the options wait for the copy to the file.
        CPLStringList opzioni = f.riscrivi ? CPLStringList() : Opzioni(OpzioniStrato(driver));
        strato = f.ds->CreateLayer(nome.c_str(), conSrs ? &srs : nullptr, geometrie[tipo], opzioni.List());
        if (!strato) {
            errore = "cannot create the layer " + nome + " in " + f.percorso + Motivo();
            return false;
        }
    }
    for (const TCampo& c : Campi(driver)) {
        if (strato->GetLayerDefn()->GetFieldIndex(c.nome) >= 0) continue;
        OGRFieldDefn campo(c.nome, c.tipo);
        if (strato->CreateField(&campo) != OGRERR_NONE) {
            errore = "cannot add the field " + std::string(c.nome) + " to " + f.percorso + Motivo();
            return false;
        }
    }
    return true;
}

bool TUscitaGis::TImpl::Riscrivi(TFileGis& f, std::string& errore)
{
    const std::string cartella = Cartella(f.percorso), nome = NomeFile(f.percorso);
    std::string modello = cartella + "/." + nome + ".XXXXXX";
    if (!mkdtemp(&modello[0])) {
        errore = "cannot write beside " + f.percorso + " (" + std::strerror(errno) + ")";
        return false;
    }
    bool ok = true;
    {
        TDs nuovo(driver->Create((modello + "/" + nome).c_str(), 0, 0, 0, GDT_Unknown, nullptr));
        ok = nuovo != nullptr;
        CPLStringList opzioni = Opzioni(OpzioniStrato(driver));
        for (int i = 0; ok && i < f.ds->GetLayerCount(); ++i) {
            OGRLayer* l = f.ds->GetLayer(i);
            if (Copiato(l)) ok = nuovo->CopyLayer(l, l->GetName(), opzioni.List()) != nullptr;
        }
        if (!ok) errore = "cannot write " + f.percorso + Motivo();
    }
    if (!ok || !Completa(modello + "/" + nome, f, errore)) {
        Rimuovi(modello);
        return false;
    }
    return Trasferisci(modello, cartella, nome, errore);
}

// A file of a format written again whole, holding more than the one layer
// that is written back (a DXF's blocks beside its entities), would lose the
// rest.
bool TUscitaGis::TImpl::Riscrivibile(GDALDataset& d, const std::string& percorso, std::string& errore) const
{
    if (!unoPerFile || d.GetLayerCount() <= 1 || d.TestCapability(ODsCTransactions))
        return true;
    errore = percorso + " holds " + std::to_string(d.GetLayerCount()) +
             " layers and only one would be written back; it is left alone";
    return false;
}

namespace {

std::unique_ptr<OGRFeature> Ultimo(OGRLayer& l)
{
    std::unique_ptr<OGRFeature> u;
    l.ResetReading();
    while (OGRFeature* f = l.GetNextFeature()) u.reset(f);
    return u;
}

// A file cut by a full disk ends in a feature cut short (a CSV line, say):
// the copy's last feature is compared with the one in memory.
bool StessoUltimo(OGRLayer& copia, OGRLayer& memoria)
{
    const std::unique_ptr<OGRFeature> a = Ultimo(copia), b = Ultimo(memoria);
    if (!a || !b) return !a && !b;
    const OGRGeometry *ga = a->GetGeometryRef(), *gb = b->GetGeometryRef();
    if (!ga || !gb || !ga->Equals(gb)) return false;
    for (int i = 0; i < b->GetFieldCount(); ++i) {
        const int j = a->GetFieldIndex(b->GetFieldDefnRef(i)->GetNameRef());
        if (j < 0 || std::string(a->GetFieldAsString(j)) != b->GetFieldAsString(i)) return false;
    }
    return true;
}

}  // namespace

bool TUscitaGis::TImpl::Copiato(OGRLayer* l) const
{
    return !unoPerFile || std::find(std::begin(strati), std::end(strati), l) != std::end(strati);
}

// The copy read back before it replaces the file: a write the system
// refused half way (a full disk) can leave a file that GDAL closed without
// a word.
bool TUscitaGis::TImpl::Completa(const std::string& copia, TFileGis& f, std::string& errore)
{
    const char* const soloQuesto[] = {driver->GetDescription(), nullptr};
    TDs letta(GDALDataset::Open(copia.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, soloQuesto));
    for (int i = 0; i < f.ds->GetLayerCount(); ++i) {
        OGRLayer* l = f.ds->GetLayer(i);
        if (!Copiato(l)) continue;
        OGRLayer* c = !letta ? nullptr : unoPerFile ? letta->GetLayer(0) : letta->GetLayerByName(l->GetName());
        if (!c || c->GetFeatureCount() != l->GetFeatureCount() || !StessoUltimo(*c, *l)) {
            errore = "cannot write " + f.percorso + ": the new copy came back incomplete (is the disk full?)";
            return false;
        }
    }
    return true;
}

TUscitaGis::TUscitaGis() : impl(std::make_unique<TImpl>()) {}
TUscitaGis::~TUscitaGis() = default;

bool TUscitaGis::Disponibile() { return true; }

// The CRS, the format and the files already there, as Verifica says.
bool TUscitaGis::TImpl::Controlla(std::string& errore)
{
    Registra();
    if (!Srs(errore) || !Driver(errore)) return false;
    const char* const soloQuesto[] = {driver->GetDescription(), nullptr};
    for (int tipo = 0; tipo < numStrati; ++tipo) {
        const std::string p = Percorso(tipo);
        if (!VerificaScrivibile(p, errore)) return false;
        if (!Esiste(p)) continue;
        TDs d(GDALDataset::Open(p.c_str(), GDAL_OF_VECTOR, soloQuesto));
        if (!d) {
            errore = p + " exists and is not a " + driver->GetDescription() + " file GDAL reads; it is left alone" +
                     Motivo();
            return false;
        }
        if (!Riscrivibile(*d, p, errore)) return false;
        if (OGRLayer* l = Esistente(*d, NomeStrato(tipo)))
            if (!StessoSrs(*l, p, errore)) return false;
    }
    return true;
}

bool TUscitaGis::Verifica(const TOpzioniGis& o, std::string& errore)
{
    TImpl m;
    m.o = o;
    return m.Controlla(errore);
}

bool TUscitaGis::Apri(const TOpzioniGis& o, std::string& errore)
{
    impl = std::make_unique<TImpl>();
    TImpl& m = *impl;
    m.o = o;
    if (!m.Controlla(errore)) return false;
    m.file.resize(m.unoPerFile ? numStrati : 1);
    for (int tipo = 0; tipo < numStrati; ++tipo) {
        m.fileDi[tipo] = m.unoPerFile ? static_cast<std::size_t>(tipo) : 0;
        TFileGis& f = m.file[m.fileDi[tipo]];
        if (!f.ds) {
            f.percorso = m.Percorso(tipo);
            if (!m.ApriFile(f, errore)) return false;
        }
        if (!m.Strato(tipo, errore)) return false;
    }
    for (TFileGis& f : m.file) {
        if (f.riscrivi) {
            if (!m.Riscrivi(f, errore)) return false;
        } else {
            f.ds->FlushCache();
        }
    }
    return true;
}

bool TUscitaGis::Scrivi(const TElementoGis& e, std::string& errore)
{
    TImpl& m = *impl;
    const TTipoStrato tipo = StratoDi(e.genere);
    OGRLayer* strato = m.strati[tipo];
    if (!strato) {
        errore = "no GIS output is open";
        return false;
    }
    TFileGis& file = m.file[m.fileDi[tipo]];
    GDALDataset& d = *file.ds;
    OGRFeature f(strato->GetLayerDefn());
    Attributi(f, e);
    f.SetGeometry(Geometria(e).get());
    CPLErrorReset();
    const bool transazione = !file.riscrivi;  // else the file is rewritten from its copy
    if (transazione && d.StartTransaction() != OGRERR_NONE) {
        errore = "cannot write to " + file.percorso + Motivo();
        return false;
    }
    if (strato->CreateFeature(&f) != OGRERR_NONE) {
        if (transazione) d.RollbackTransaction();
        errore = "cannot write a feature to " + file.percorso + Motivo();
        return false;
    }
    if (transazione) {
        if (d.CommitTransaction() == OGRERR_NONE) return true;
        errore = "cannot commit a feature to " + file.percorso + Motivo();
        return false;
    }
    if (m.Riscrivi(file, errore)) return true;
    // Not in the file: not in the next copy either.
    if (strato->DeleteFeature(f.GetFID()) != OGRERR_NONE) errore += "; the layer in memory keeps it";
    return false;
}

std::string TUscitaGis::Descrizione() const
{
    if (!impl->driver) return {};
    return std::string(impl->driver->GetDescription()) + ", " + std::to_string(impl->esistenti) +
           " features already there";
}

std::vector<std::string> TUscitaGis::File() const
{
    std::vector<std::string> v;
    for (const TFileGis& f : impl->file) v.push_back(f.percorso);
    return v;
}
