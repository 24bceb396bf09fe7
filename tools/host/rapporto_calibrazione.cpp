#include "rapporto_calibrazione.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <vector>

namespace {

std::string Numero(double v, const char* formato = "%.17g")
{
    if (std::isnan(v)) return "null";
    char b[40];
    std::snprintf(b, sizeof b, formato, v);
    return b;
}

std::string Cella(double v, const char* formato)
{
    return std::isnan(v) ? "-" : Numero(v, formato);
}

std::string Riga(const char* formato, ...) __attribute__((format(printf, 1, 2)));
std::string Riga(const char* formato, ...)
{
    char b[256];
    va_list a;
    va_start(a, formato);
    std::vsnprintf(b, sizeof b, formato, a);
    va_end(a);
    return std::string(b) + "\n";
}

double Lunghezza(const TResiduoPunto& q) { return std::hypot(q.residuoEst, q.residuoNord); }

std::vector<std::string> Avvisi(const TRapportoCalibrazione& r)
{
    std::vector<std::string> v;
    if (r.avvisi & avvisoRaggruppati)
        v.push_back("the points cover only " + Numero(100 * r.copertura, "%.1f") +
                    "% of the limits: spread them over the whole sheet");
    if (r.avvisi & avvisoAllineati) v.push_back("the points lie nearly in a line");
    if (r.avvisi & avvisoGrossolano)
        v.push_back("point " + std::to_string(r.peggiori[0] + 1) + " is probably wrong: digitize it again");
    if (r.avvisi & avvisoSenzaRidondanza) v.push_back("three points: nothing checks them; add a fourth");
    for (int k : r.nodiFuoriPosto)
        v.push_back("node " + std::to_string(k + 1) + " departs from its neighbours: digitize it again");
    return v;
}

std::string ListaJson(const std::vector<std::string>& v)
{
    std::string s = "[";
    for (std::size_t i = 0; i < v.size(); ++i) {
        s += (i ? ", \"" : "\"");
        for (char c : v[i]) s += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
        s += "\"";
    }
    return s + "]";
}

}  // namespace

std::string Testo(const TRapportoCalibrazione& r)
{
    const bool griglia = r.tipo == TRapportoCalibrazione::griglia;
    std::string s = griglia ? Riga("calibration report: grid of %zu nodes, against one affine map (ground units)",
                                   r.punti.size())
                            : Riga("calibration report: %zu sparse points (ground units)", r.punti.size());
    s += Riga("%5s %12s %12s %9s %9s %9s %9s", griglia ? "node" : "point", "East", "North", "dEast", "dNorth",
              "loo dE", "loo dN");
    for (std::size_t k = 0; k < r.punti.size(); ++k) {
        const TResiduoPunto& q = r.punti[k];
        s += Riga("%5zu %12.3f %12.3f %9.4f %9.4f %9s %9s", k + 1, q.punto.est, q.punto.nord, q.residuoEst,
                  q.residuoNord, Cella(q.lasciaFuoriEst, "%.4f").c_str(), Cella(q.lasciaFuoriNord, "%.4f").c_str());
    }
    s += Riga("RMS %.4g = sqrt(sum(dEast^2 + dNorth^2) / n)", r.rms);
    if (std::isnan(r.deviazione)) s += Riga("standard deviation: none, three points leave no redundancy");
    else s += Riga("standard deviation %.4g = sqrt(sum(dEast^2 + dNorth^2) / (2n - 6))", r.deviazione);
    s += Riga("largest residuals: %d (%.4g), %d (%.4g)", r.peggiori[0] + 1,
              Lunghezza(r.punti[static_cast<std::size_t>(r.peggiori[0])]), r.peggiori[1] + 1,
              Lunghezza(r.punti[static_cast<std::size_t>(r.peggiori[1])]));
    if (!griglia && !std::isnan(r.peggiorePrevisto))
        s += Riga("predicted worst error within the limits: %.4g (the position's standard error)", r.peggiorePrevisto);
    for (const std::string& a : Avvisi(r)) s += "WARNING: " + a + "\n";
    return s;
}

std::string Json(const TRapportoCalibrazione& r)
{
    std::string s = std::string("{\n  \"calibration\": \"") +
                    (r.tipo == TRapportoCalibrazione::griglia ? "grid" : "sparse points") + "\",\n  \"points\": [\n";
    for (std::size_t k = 0; k < r.punti.size(); ++k) {
        const TResiduoPunto& q = r.punti[k];
        s += "    {\"count_x\": " + std::to_string(q.punto.x) + ", \"count_y\": " + std::to_string(q.punto.y) +
             ", \"east\": " + Numero(q.punto.est) + ", \"north\": " + Numero(q.punto.nord) +
             ", \"residual_east\": " + Numero(q.residuoEst) + ", \"residual_north\": " + Numero(q.residuoNord) +
             ", \"loo_east\": " + Numero(q.lasciaFuoriEst) + ", \"loo_north\": " + Numero(q.lasciaFuoriNord) + "}" +
             (k + 1 < r.punti.size() ? ",\n" : "\n");
    }
    s += "  ],\n  \"rms\": " + Numero(r.rms) + ",\n  \"std_dev\": " + Numero(r.deviazione) + ",\n  \"worst\": [" +
         std::to_string(r.peggiori[0]) + ", " + std::to_string(r.peggiori[1]) + "],\n  \"predicted_worst\": " +
         Numero(r.peggiorePrevisto) + ",\n  \"warning_bits\": " + std::to_string(r.avvisi) +
         ",\n  \"warnings\": " + ListaJson(Avvisi(r)) + "\n}\n";
    return s;
}
