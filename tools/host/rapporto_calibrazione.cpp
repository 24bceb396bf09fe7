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

namespace {

// The points that a fit without them checks.
int Verificati(const TRapportoCalibrazione& r)
{
    int n = 0;
    for (const TResiduoPunto& q : r.punti) n += !std::isnan(q.lasciaFuoriEst);
    return n;
}

}  // namespace

std::string Testo(const TRapportoCalibrazione& r)
{
    const bool griglia = r.tipo == TRapportoCalibrazione::griglia;
    const std::size_t n = r.punti.size();
    std::string s = griglia ? Riga("calibration report: grid of %zu nodes, against one affine map (ground units)", n)
                            : Riga("calibration report: %zu sparse points (ground units)", n);
    if (griglia)
        s += Riga("%zu nodes taken, each the corner of its cells' maps, which pass through it exactly; the columns\n"
                  "below compare them with one affine map of all: the sheet's shrink or folds, not the maps' errors", n);
    else
        s += Riga("%zu points taken, all %zu used in the least-squares map, %d checked by fitting without them", n, n,
                  Verificati(r));
    s += Riga("dEast, dNorth: the coordinates given minus those the map gives at the point's counts\n"
              "loo dE, loo dN: the same with the map fitted leaving that point out (- when the\n"
              "others give no map): a point far off here is one the others do not confirm");
    s += Riga("%5s %12s %12s %9s %9s %9s %9s", griglia ? "node" : "point", "East", "North", "dEast", "dNorth",
              "loo dE", "loo dN");
    for (std::size_t k = 0; k < n; ++k) {
        const TResiduoPunto& q = r.punti[k];
        s += Riga("%5zu %12.3f %12.3f %9.4f %9.4f %9s %9s", k + 1, q.punto.est, q.punto.nord, q.residuoEst,
                  q.residuoNord, Cella(q.lasciaFuoriEst, "%.4f").c_str(), Cella(q.lasciaFuoriNord, "%.4f").c_str());
    }
    s += Riga("RMS %.4g = sqrt(sum(dEast^2 + dNorth^2) / n): the typical residual", r.rms);
    if (std::isnan(r.deviazione)) s += Riga("standard deviation: none, three points leave no redundancy");
    else
        s += Riga("standard deviation %.4g = sqrt(sum(dEast^2 + dNorth^2) / (2n - 6)): the error of one point,\n"
                  "allowing for the six numbers of the map taken from the same points", r.deviazione);
    s += Riga("largest residuals: %d (%.4g), %d (%.4g)", r.peggiori[0] + 1,
              Lunghezza(r.punti[static_cast<std::size_t>(r.peggiori[0])]), r.peggiori[1] + 1,
              Lunghezza(r.punti[static_cast<std::size_t>(r.peggiori[1])]));
    if (!griglia && !std::isnan(r.peggiorePrevisto))
        s += Riga("predicted worst error within the limits: %.4g (the standard error of a position at the\n"
                  "worst corner, away from the points)", r.peggiorePrevisto);
    for (const std::string& a : Avvisi(r)) s += "WARNING: " + a + "\n";
    return s;
}

std::string Json(const TRapportoCalibrazione& r, const std::string& id)
{
    std::string s = "{\"id\": \"" + id + "\", \"calibration\": \"" +
                    (r.tipo == TRapportoCalibrazione::griglia ? "grid" : "sparse points") +
                    "\", \"points_taken\": " + std::to_string(r.punti.size()) +
                    ", \"points_checked\": " + std::to_string(Verificati(r)) + ", \"points\": [";
    for (std::size_t k = 0; k < r.punti.size(); ++k) {
        const TResiduoPunto& q = r.punti[k];
        s += std::string(k ? ", " : "") + "{\"count_x\": " + std::to_string(q.punto.x) +
             ", \"count_y\": " + std::to_string(q.punto.y) + ", \"east\": " + Numero(q.punto.est) +
             ", \"north\": " + Numero(q.punto.nord) + ", \"residual_east\": " + Numero(q.residuoEst) +
             ", \"residual_north\": " + Numero(q.residuoNord) + ", \"loo_east\": " + Numero(q.lasciaFuoriEst) +
             ", \"loo_north\": " + Numero(q.lasciaFuoriNord) + "}";
    }
    s += "], \"rms\": " + Numero(r.rms) + ", \"std_dev\": " + Numero(r.deviazione) + ", \"worst\": [" +
         std::to_string(r.peggiori[0]) + ", " + std::to_string(r.peggiori[1]) +
         "], \"predicted_worst\": " + Numero(r.peggiorePrevisto) + ", \"warning_bits\": " +
         std::to_string(r.avvisi) + ", \"warnings\": " + ListaJson(Avvisi(r)) + "}\n";
    return s;
}
