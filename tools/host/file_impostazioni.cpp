#include "file_impostazioni.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

namespace {

constexpr int versione = 1;
const char* const intestazione = "# velmarin-host: the tablet's set-up, written by config";

const char* const chiavi[] = {"version", "model",  "port",    "baud",      "parity",   "data_bits",
                              "stop_bits", "reset", "resolution", "buttons", "functions", "limits"};

bool Numeri(const std::string& testo, std::vector<long>& v)
{
    std::istringstream in(testo);
    std::string parola;
    while (in >> parola) {
        char* fine = nullptr;
        errno = 0;
        const long n = std::strtol(parola.c_str(), &fine, 10);
        if (*fine != '\0' || errno != 0) return false;
        v.push_back(n);
    }
    return true;
}

bool Uno(const std::string& testo, long& n, std::initializer_list<long> ammessi)
{
    std::vector<long> v;
    if (!Numeri(testo, v) || v.size() != 1) return false;
    n = v[0];
    for (long a : ammessi)
        if (n == a) return true;
    return false;
}

bool Tra(const std::string& testo, long& n, long minimo, long massimo)
{
    std::vector<long> v;
    if (!Numeri(testo, v) || v.size() != 1 || v[0] < minimo || v[0] > massimo) return false;
    n = v[0];
    return true;
}

// Reads the value of `chiave` into `d`; false when it is not right.
bool Valore(const std::string& chiave, const std::string& testo, TDataDigit& d)
{
    long n = 0;
    std::vector<long> v;
    auto s16 = [](long x) { return static_cast<std::int16_t>(x); };
    if (chiave == "model") return Tra(testo, n, 1, 8) && (d.tipo = s16(n), true);
    if (chiave == "port") return Tra(testo, n, 1, 4) && (d.porta = s16(n), true);
    if (chiave == "baud") return Uno(testo, n, {4800, 9600, 19200}) && (d.velocita = s16(n), true);
    if (chiave == "parity") {
        if (testo != "N" && testo != "E" && testo != "O") return false;
        d.parita = testo[0];
        return true;
    }
    if (chiave == "data_bits") return Uno(testo, n, {7, 8}) && (d.bitDati = s16(n), true);
    if (chiave == "stop_bits") return Uno(testo, n, {1, 2}) && (d.bitStop = s16(n), true);
    if (chiave == "reset") return Uno(testo, n, {1, 2}) && (d.reset = s16(n), true);
    if (chiave == "resolution") return Tra(testo, n, 1, 3) && (d.risoluzione = s16(n), true);
    if (chiave == "buttons") return Uno(testo, n, {4, 16}) && (d.numBottoni = s16(n), true);
    if (chiave == "functions") {
        if (!Numeri(testo, v) || v.size() != 16) return false;
        for (std::size_t i = 0; i < 16; ++i) {
            if (v[i] < 0 || v[i] > 8 || v[i] == 3 || v[i] == 7) return false;
            d.funzBott[i] = static_cast<std::uint8_t>(v[i]);
        }
        return true;
    }
    if (chiave == "limits") {
        if (testo == "none") {
            d.limitiDefiniti = false;
            d.xMin = d.yMin = d.xMax = d.yMax = 0;
            return true;
        }
        if (!Numeri(testo, v) || v.size() != 4) return false;
        for (long x : v)
            if (x < INT32_MIN || x > INT32_MAX) return false;
        d.limitiDefiniti = true;
        d.xMin = static_cast<std::int32_t>(v[0]), d.yMin = static_cast<std::int32_t>(v[1]);
        d.xMax = static_cast<std::int32_t>(v[2]), d.yMax = static_cast<std::int32_t>(v[3]);
        return true;
    }
    return false;
}

}  // namespace

std::string PercorsoImpostazioni(const std::string& scelto)
{
    if (!scelto.empty()) return scelto;
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg && *xdg == '/') return std::string(xdg) + "/velmarin/setup";
    const char* casa = std::getenv("HOME");
    if (casa && *casa) return std::string(casa) + "/.config/velmarin/setup";
    return {};
}

namespace {

// A value as a message may show it: printable, and short.
std::string Mostra(const std::string& v)
{
    std::string s;
    for (unsigned char c : v.substr(0, 40)) s += c >= 0x20 && c < 0x7f ? static_cast<char>(c) : '?';
    return v.size() > 40 ? s + "..." : s;
}

// What keeps `percorso` from being read as a set-up file, or empty; the
// whole text in `testo` when nothing does.
std::string Illeggibile(const std::string& percorso, std::string& testo, bool& assente)
{
    struct stat st {};
    assente = false;
    if (stat(percorso.c_str(), &st) != 0) {
        assente = errno == ENOENT;
        return "cannot read " + percorso + " (" + std::strerror(errno) + ")";
    }
    if (S_ISDIR(st.st_mode)) return percorso + " is a folder, not a set-up file";
    if (!S_ISREG(st.st_mode) || st.st_size > 64 * 1024) return percorso + " is not a set-up file";
    std::ifstream in(percorso, std::ios::binary);
    if (!in) return "cannot read " + percorso + " (" + std::strerror(errno) + ")";
    testo.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    for (unsigned char c : testo)
        if (c < 0x20 && c != '\n' && c != '\r' && c != '\t')
            return percorso + " is not a set-up file: it holds binary data";
    return {};
}

}  // namespace

TEsitoImpostazioni LeggiImpostazioni(const std::string& percorso, TDataDigit& dati, std::string& messaggio)
{
    std::string testo;
    bool assente = false;
    messaggio = Illeggibile(percorso, testo, assente);
    if (assente) {
        messaggio = "no set-up file at " + percorso;
        return TEsitoImpostazioni::assente;
    }
    if (!messaggio.empty()) return TEsitoImpostazioni::errato;
    std::istringstream in(testo);
    TDataDigit d = dati;
    std::map<std::string, int> viste;
    std::string riga;
    for (int numero = 1; std::getline(in, riga); ++numero) {
        if (!riga.empty() && riga.back() == '\r') riga.pop_back();  // written on Windows
        if (riga.empty() || riga[0] == '#') continue;
        const auto spazio = riga.find(' ');
        const std::string chiave = riga.substr(0, spazio);
        const std::string valore = spazio == std::string::npos ? "" : riga.substr(spazio + 1);
        const std::string dove = percorso + ", line " + std::to_string(numero) + ": ";
        if (chiave == "version") {
            long v = 0;
            if (!Tra(valore, v, 1, 1000000)) {
                messaggio = dove + "the version is not a number";
                return TEsitoImpostazioni::errato;
            }
            if (v > versione) {
                messaggio = dove + "written by a newer velmarin-host (version " + Mostra(valore) +
                            "; this one reads version " + std::to_string(versione) + ")";
                return TEsitoImpostazioni::errato;
            }
        } else if (!Valore(chiave, valore, d)) {
            messaggio = dove + (std::find(std::begin(chiavi), std::end(chiavi), chiave) == std::end(chiavi)
                                    ? "unknown setting " + Mostra(chiave)
                                    : "bad " + chiave + " value: " + Mostra(valore));
            return TEsitoImpostazioni::errato;
        }
        if (++viste[chiave] > 1) {
            messaggio = dove + chiave + " is set twice";
            return TEsitoImpostazioni::errato;
        }
    }
    for (const char* c : chiavi) {
        if (!viste.count(c)) {
            messaggio = percorso + ": no " + c + " line; the file is cut short or was edited";
            return TEsitoImpostazioni::errato;
        }
    }
    dati = d;
    messaggio = "set-up read from " + percorso;
    return TEsitoImpostazioni::letto;
}

bool ScriviImpostazioni(const std::string& percorso, const TDataDigit& d, std::string& errore)
{
    // The folder, and the folder above it ($HOME/.config), when missing.
    for (std::size_t barra = percorso.find('/', 1); barra != std::string::npos; barra = percorso.find('/', barra + 1))
        mkdir(percorso.substr(0, barra).c_str(), 0755);
    std::ostringstream s;
    s << intestazione << "\nversion " << versione << "\nmodel " << d.tipo << "\nport " << d.porta << "\nbaud "
      << d.velocita << "\nparity " << static_cast<char>(d.parita) << "\ndata_bits " << d.bitDati << "\nstop_bits "
      << d.bitStop << "\nreset " << d.reset << "\nresolution " << d.risoluzione << "\nbuttons " << d.numBottoni
      << "\nfunctions";
    for (std::uint8_t f : d.funzBott) s << ' ' << static_cast<int>(f);
    s << "\nlimits ";
    if (d.limitiDefiniti) s << d.xMin << ' ' << d.yMin << ' ' << d.xMax << ' ' << d.yMax << '\n';
    else s << "none\n";
    const std::string nuovo = percorso + ".new";
    {
        std::ofstream out(nuovo, std::ios::trunc);
        out << s.str();
        if (!out.flush()) {
            errore = "cannot write " + nuovo + " (" + std::strerror(errno) + ")";
            return false;
        }
    }
    if (std::rename(nuovo.c_str(), percorso.c_str()) != 0) {
        errore = "cannot replace " + percorso + " (" + std::strerror(errno) + ")";
        std::remove(nuovo.c_str());
        return false;
    }
    return true;
}
