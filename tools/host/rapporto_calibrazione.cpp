#include "rapporto_calibrazione.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <limits>

namespace {

constexpr double nessuno = std::numeric_limits<double>::quiet_NaN();

// Below these the points are called badly placed.
constexpr double allineamentoMinimo = 0.1, coperturaMinima = 0.25, fattoreMassimo = 10;

// The host's own least-squares affine fit, on counts centred on their mean so
// that the normal equations split into the mean and a 2 by 2 system.
struct TAdattamento {
    double n = 0, xm = 0, ym = 0;
    double i11 = 0, i12 = 0, i22 = 0;  // inverse of the scatter of the counts
    double e[3] = {0, 0, 0}, d[3] = {0, 0, 0};  // East, North: mean, factor of x - xm, of y - ym

    double Est(double x, double y) const { return e[0] + e[1] * (x - xm) + e[2] * (y - ym); }
    double Nord(double x, double y) const { return d[0] + d[1] * (x - xm) + d[2] * (y - ym); }
    // The weight of the point at (xk, yk) in the fitted value at (x, y).
    double Peso(double xk, double yk, double x, double y) const
    {
        const double ax = x - xm, ay = y - ym, bx = xk - xm, by = yk - ym;
        return 1 / n + ax * (i11 * bx + i12 * by) + ay * (i12 * bx + i22 * by);
    }
};

bool Adatta(const std::vector<TPuntoControllo>& p, int escluso, TAdattamento& a)
{
    a = TAdattamento{};
    for (int k = 0; k < static_cast<int>(p.size()); ++k) {
        if (k == escluso) continue;
        a.n += 1;
        a.xm += p[k].x;
        a.ym += p[k].y;
        a.e[0] += p[k].est;
        a.d[0] += p[k].nord;
    }
    if (a.n < 3) return false;
    a.xm /= a.n, a.ym /= a.n, a.e[0] /= a.n, a.d[0] /= a.n;
    double sxx = 0, sxy = 0, syy = 0, sxe = 0, sye = 0, sxn = 0, syn = 0;
    for (int k = 0; k < static_cast<int>(p.size()); ++k) {
        if (k == escluso) continue;
        const double dx = p[k].x - a.xm, dy = p[k].y - a.ym;
        sxx += dx * dx, sxy += dx * dy, syy += dy * dy;
        sxe += dx * p[k].est, sye += dy * p[k].est, sxn += dx * p[k].nord, syn += dy * p[k].nord;
    }
    const double det = sxx * syy - sxy * sxy;
    if (!(det > 1e-12 * (sxx + syy) * (sxx + syy))) return false;
    a.i11 = syy / det, a.i12 = -sxy / det, a.i22 = sxx / det;
    a.e[1] = a.i11 * sxe + a.i12 * sye, a.e[2] = a.i12 * sxe + a.i22 * sye;
    a.d[1] = a.i11 * sxn + a.i12 * syn, a.d[2] = a.i12 * sxn + a.i22 * syn;
    return true;
}

// Ratio of the smaller to the larger standard spread of the counts.
double Allineamento(const std::vector<TPuntoControllo>& p)
{
    double xm = 0, ym = 0;
    for (const TPuntoControllo& q : p) xm += q.x, ym += q.y;
    xm /= p.size(), ym /= p.size();
    double sxx = 0, sxy = 0, syy = 0;
    for (const TPuntoControllo& q : p)
        sxx += (q.x - xm) * (q.x - xm), sxy += (q.x - xm) * (q.y - ym), syy += (q.y - ym) * (q.y - ym);
    const double t = sxx + syy, r = std::sqrt(std::max(0.0, t * t / 4 - (sxx * syy - sxy * sxy)));
    return t > 0 ? std::sqrt(std::max(0.0, t / 2 - r) / (t / 2 + r)) : 0;
}

// The largest singular value of the map's linear part.
double Scala(const TAdattamento& a)
{
    const double t = a.e[1] * a.e[1] + a.e[2] * a.e[2] + a.d[1] * a.d[1] + a.d[2] * a.d[2];
    const double det = a.e[1] * a.d[2] - a.e[2] * a.d[1];
    return std::sqrt((t + std::sqrt(std::max(0.0, t * t - 4 * det * det))) / 2);
}

std::string Numero(double v, const char* formato = "%.6g")
{
    if (std::isnan(v)) return "null";
    char b[40];
    std::snprintf(b, sizeof b, formato, v);
    return b;
}

std::string Cella(double v, const char* formato)
{
    if (std::isnan(v)) return "-";
    char b[40];
    std::snprintf(b, sizeof b, formato, v);
    return b;
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

bool RapportoPunti(const CDigit& digit, const std::vector<TPuntoControllo>& p, TRapportoPunti& r)
{
    r = TRapportoPunti{};
    r.punti = p;
    TAdattamento a;
    if (!Adatta(p, -1, a)) return false;
    const int n = static_cast<int>(p.size());
    double somma = 0;
    for (int k = 0; k < n; ++k) {
        double est = a.Est(p[k].x, p[k].y), nord = a.Nord(p[k].x, p[k].y);
        const double e0 = est, n0 = nord;
        if (!digit.CalcoloCoordTrasfCalibrFine(p[k].x, p[k].y, est, nord)) r.concorda = false;
        const double tolleranza = 1e-6 * (1 + std::fabs(e0) + std::fabs(n0));
        if (std::fabs(est - e0) > tolleranza || std::fabs(nord - n0) > tolleranza) r.concorda = false;
        const double de = est - p[k].est, dn = nord - p[k].nord;
        r.residui.push_back({de, dn, std::hypot(de, dn)});
        somma += de * de + dn * dn;
    }
    r.rms = std::sqrt(somma / n);
    r.deviazione = n > 3 ? std::sqrt(somma / (2.0 * (n - 3))) : nessuno;
    std::vector<int> ordine(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) ordine[static_cast<std::size_t>(k)] = k;
    std::stable_sort(ordine.begin(), ordine.end(),
                     [&](int i, int j) { return r.residui[static_cast<std::size_t>(i)].lunghezza > r.residui[static_cast<std::size_t>(j)].lunghezza; });
    r.peggiori[0] = ordine[0] + 1;
    r.peggiori[1] = ordine[1] + 1;
    if (n >= 4) {
        for (int k = 0; k < n; ++k) {
            TAdattamento senza;
            r.lasciaFuori.push_back(Adatta(p, k, senza) ? std::hypot(senza.Est(p[k].x, p[k].y) - p[k].est,
                                                                      senza.Nord(p[k].x, p[k].y) - p[k].nord)
                                                        : nessuno);
        }
    }

    TDataDigit dati;
    digit.GetDataDigit(dati);
    double x1 = p[0].x, y1 = p[0].y, x2 = x1, y2 = y1;
    for (const TPuntoControllo& q : p) x1 = std::min<double>(x1, q.x), y1 = std::min<double>(y1, q.y),
                                       x2 = std::max<double>(x2, q.x), y2 = std::max<double>(y2, q.y);
    r.allineamento = Allineamento(p);
    r.copertura = nessuno;
    double lx1 = x1, ly1 = y1, lx2 = x2, ly2 = y2;
    if (dati.limitiDefiniti) {
        lx1 = std::min(dati.xMin, dati.xMax), lx2 = std::max(dati.xMin, dati.xMax);
        ly1 = std::min(dati.yMin, dati.yMax), ly2 = std::max(dati.yMin, dati.yMax);
        const double area = (lx2 - lx1) * (ly2 - ly1);
        if (area > 0) r.copertura = (x2 - x1) * (y2 - y1) / area;
    }
    const double angoli[4][2] = {{lx1, ly1}, {lx1, ly2}, {lx2, ly1}, {lx2, ly2}};
    for (const auto& c : angoli) {
        double s = 0;
        for (const TPuntoControllo& q : p) s += std::fabs(a.Peso(q.x, q.y, c[0], c[1]));
        r.fattore = std::max(r.fattore, s);
    }
    r.scala = Scala(a);
    r.peggiorePrevisto = erroreDigitalizzazione * r.scala * r.fattore;

    if (!r.concorda)
        r.avvisi.push_back("the points the host heard do not give the library's map: a press was missed");
    if (r.allineamento < allineamentoMinimo) r.avvisi.push_back("the points lie nearly in a line");
    if (r.copertura < coperturaMinima)
        r.avvisi.push_back("the points cover only " + Numero(100 * r.copertura, "%.1f") + "% of the limits");
    if (r.fattore > fattoreMassimo || !r.avvisi.empty())
        r.avvisi.push_back("away from the points the map can be off by " + Numero(r.peggiorePrevisto, "%.4g") +
                           ": spread the points over the whole sheet and calibrate again");
    return true;
}

std::string Testo(const TRapportoPunti& r)
{
    const int n = static_cast<int>(r.punti.size());
    std::string s = Riga("calibration report: %d sparse points (ground units)", n);
    s += Riga("%5s %12s %12s %9s %9s %9s %9s", "point", "East", "North", "dEast", "dNorth", "residual", "leave-out");
    for (int k = 0; k < n; ++k) {
        const auto& q = r.punti[static_cast<std::size_t>(k)];
        const auto& e = r.residui[static_cast<std::size_t>(k)];
        s += Riga("%5d %12.3f %12.3f %9.4f %9.4f %9.4f %9s", k + 1, q.est, q.nord, e.est, e.nord, e.lunghezza,
                  r.lasciaFuori.empty() ? "-" : Cella(r.lasciaFuori[static_cast<std::size_t>(k)], "%.4f").c_str());
    }
    s += Riga("RMS %.4g = sqrt(sum(dEast^2 + dNorth^2) / n)", r.rms);
    if (std::isnan(r.deviazione)) s += Riga("standard deviation: none, three points leave no redundancy");
    else s += Riga("standard deviation %.4g = sqrt(sum(dEast^2 + dNorth^2) / (2 (n - 3)))", r.deviazione);
    s += Riga("largest residuals: point %d (%.4g), point %d (%.4g)", r.peggiori[0],
              r.residui[static_cast<std::size_t>(r.peggiori[0] - 1)].lunghezza, r.peggiori[1],
              r.residui[static_cast<std::size_t>(r.peggiori[1] - 1)].lunghezza);
    if (r.lasciaFuori.empty()) s += Riga("leave-one-out: needs four points or more");
    s += Riga("placement: spread %.2f (0 in a line, 1 even), %s of the limits covered", r.allineamento,
              std::isnan(r.copertura) ? "no limits, none" : (Numero(100 * r.copertura, "%.1f") + "%").c_str());
    s += Riga("predicted worst error within the limits: %.4g for %g counts off at each point", r.peggiorePrevisto,
              erroreDigitalizzazione);
    s += Riga("  (%.4g ground units a count, placement errors carried %.3g times)", r.scala, r.fattore);
    for (const std::string& a : r.avvisi) s += "WARNING: " + a + "\n";
    return s;
}

std::string Json(const TRapportoPunti& r)
{
    std::string s = "{\n  \"calibration\": \"sparse points\",\n";
    s += "  \"definitions\": {\n"
         "    \"residual\": \"the fitted map at the point's counts minus the ground coordinates typed\",\n"
         "    \"rms\": \"sqrt(sum(dEast^2 + dNorth^2) / n)\",\n"
         "    \"standard_deviation\": \"sqrt(sum(dEast^2 + dNorth^2) / (2 (n - 3))), null for three points\",\n"
         "    \"leave_one_out\": \"distance at the point of the map fitted without it\",\n"
         "    \"spread\": \"smaller over larger standard spread of the points' counts, 0 in a line\",\n"
         "    \"coverage\": \"area of the points' bounding box over the area of the limits\",\n"
         "    \"error_factor\": \"largest over the limits' corners of sum |w_k|, w_k the weight of point k\",\n"
         "    \"predicted_worst_error\": \"placement_error_counts * scale * error_factor\"\n  },\n";
    s += "  \"points\": [\n";
    for (std::size_t k = 0; k < r.punti.size(); ++k) {
        const auto& q = r.punti[k];
        const auto& e = r.residui[k];
        s += "    {\"number\": " + std::to_string(k + 1) + ", \"east\": " + Numero(q.est, "%.17g") +
             ", \"north\": " + Numero(q.nord, "%.17g") + ", \"count_x\": " + std::to_string(q.x) +
             ", \"count_y\": " + std::to_string(q.y) + ", \"residual_east\": " + Numero(e.est, "%.17g") +
             ", \"residual_north\": " + Numero(e.nord, "%.17g") + ", \"residual\": " + Numero(e.lunghezza, "%.17g") +
             ", \"leave_one_out\": " + (r.lasciaFuori.empty() ? "null" : Numero(r.lasciaFuori[k], "%.17g")) + "}" +
             (k + 1 < r.punti.size() ? ",\n" : "\n");
    }
    s += "  ],\n  \"rms\": " + Numero(r.rms, "%.17g") + ",\n  \"standard_deviation\": " + Numero(r.deviazione, "%.17g") +
         ",\n  \"largest_residuals\": [" + std::to_string(r.peggiori[0]) + ", " + std::to_string(r.peggiori[1]) +
         "],\n  \"spread\": " + Numero(r.allineamento, "%.17g") + ",\n  \"coverage\": " + Numero(r.copertura, "%.17g") +
         ",\n  \"scale\": " + Numero(r.scala, "%.17g") + ",\n  \"error_factor\": " + Numero(r.fattore, "%.17g") +
         ",\n  \"placement_error_counts\": " + Numero(erroreDigitalizzazione) +
         ",\n  \"predicted_worst_error\": " + Numero(r.peggiorePrevisto, "%.17g") +
         ",\n  \"matches_library\": " + (r.concorda ? "true" : "false") + ",\n  \"warnings\": " + ListaJson(r.avvisi) +
         "\n}\n";
    return s;
}

namespace {

struct TPunto2 {
    double x, y;
};

double Croce(TPunto2 o, TPunto2 a, TPunto2 b) { return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x); }

double Gradi(double radianti)
{
    double g = radianti * 180 / M_PI;
    while (g > 180) g -= 360;
    while (g <= -180) g += 360;
    return g;
}

}  // namespace

bool RapportoGriglia(const std::vector<TPuntoControllo>& nodi, const TParametriGriglia& g, TRapportoGriglia& r)
{
    r = TRapportoGriglia{};
    const int ne = g.numQuadEst, nn = g.numQuadNord;
    if (ne < 1 || nn < 1 || static_cast<int>(nodi.size()) != (ne + 1) * (nn + 1)) return false;
    auto nodo = [&](int i, int j) {
        const TPuntoControllo& q = nodi[static_cast<std::size_t>(i * (nn + 1) + j)];
        return TPunto2{double(q.x), double(q.y)};
    };
    // The ground turns the corners 0, 2, 3, 1 counter-clockwise when both
    // intervals have one sign.
    const double versoTerra = g.passoEst * g.passoNord > 0 ? 1 : -1;
    for (int i = 0; i < ne; ++i) {
        for (int j = 0; j < nn; ++j) {
            const TPunto2 giro[4] = {nodo(i, j), nodo(i + 1, j), nodo(i + 1, j + 1), nodo(i, j + 1)};
            int positivi = 0, negativi = 0;
            for (int k = 0; k < 4; ++k) {
                const double c = Croce(giro[k], giro[(k + 1) % 4], giro[(k + 2) % 4]);
                positivi += c > 0, negativi += c < 0;
            }
            const bool piegata = positivi != 4 && negativi != 4;
            const bool rovesciata = !piegata && (positivi == 4 ? 1 : -1) != versoTerra;
            const TPunto2 p0 = giro[0], p2 = giro[1], p3 = giro[2], p1 = giro[3];
            const double lungEst = (std::hypot(p2.x - p0.x, p2.y - p0.y) + std::hypot(p3.x - p1.x, p3.y - p1.y)) / 2;
            const double lungNord = (std::hypot(p1.x - p0.x, p1.y - p0.y) + std::hypot(p3.x - p2.x, p3.y - p2.y)) / 2;
            // The East side runs from corner 0 to corner 2 when passoEst is
            // positive, the other way when it is negative.
            const double verso = g.passoEst < 0 ? -1 : 1;
            const double angolo = std::atan2(verso * ((p2.y - p0.y) + (p3.y - p1.y)), verso * ((p2.x - p0.x) + (p3.x - p1.x)));
            r.celle.push_back({i, j, lungEst > 0 ? std::fabs(g.passoEst) / lungEst : nessuno,
                               lungNord > 0 ? std::fabs(g.passoNord) / lungNord : nessuno, Gradi(angolo), piegata,
                               rovesciata});
            if (piegata || rovesciata)
                r.avvisi.push_back("cell " + std::to_string(i) + "," + std::to_string(j) + " is " +
                                   (piegata ? "folded" : "inverted") + " on the tablet: digitize its corners again");
        }
    }
    r.scalaMin = r.rotazioneMin = std::numeric_limits<double>::infinity();
    r.scalaMax = r.rotazioneMax = -std::numeric_limits<double>::infinity();
    for (const auto& c : r.celle) {
        r.scalaMin = std::min({r.scalaMin, c.scalaEst, c.scalaNord});
        r.scalaMax = std::max({r.scalaMax, c.scalaEst, c.scalaNord});
        r.rotazioneMin = std::min(r.rotazioneMin, c.rotazione);
        r.rotazioneMax = std::max(r.rotazioneMax, c.rotazione);
    }
    return true;
}

std::string Testo(const TRapportoGriglia& r)
{
    std::string s = Riga("calibration report: grid of %zu cells", r.celle.size());
    s += Riga("scale, ground units a count along the cells' sides: %.6g to %.6g", r.scalaMin, r.scalaMax);
    s += Riga("rotation of the cells' East side from the tablet's x axis: %.3f to %.3f degrees", r.rotazioneMin,
              r.rotazioneMax);
    for (const std::string& a : r.avvisi) s += "WARNING: " + a + "\n";
    return s;
}

std::string Json(const TRapportoGriglia& r)
{
    std::string s = "{\n  \"calibration\": \"grid\",\n  \"definitions\": {\n"
                    "    \"scale\": \"ground units per tablet count along a cell's East and North sides\",\n"
                    "    \"rotation\": \"degrees from the tablet's x axis to the cell's East side, counter-clockwise\",\n"
                    "    \"folded\": \"the cell's corners on the tablet make no convex quadrilateral\",\n"
                    "    \"inverted\": \"the cell's corners on the tablet turn the other way from the ground's\"\n"
                    "  },\n  \"cells\": [\n";
    for (std::size_t k = 0; k < r.celle.size(); ++k) {
        const auto& c = r.celle[k];
        s += "    {\"east_index\": " + std::to_string(c.i) + ", \"north_index\": " + std::to_string(c.j) +
             ", \"scale_east\": " + Numero(c.scalaEst, "%.17g") + ", \"scale_north\": " + Numero(c.scalaNord, "%.17g") +
             ", \"rotation\": " + Numero(c.rotazione, "%.17g") + ", \"folded\": " + (c.piegata ? "true" : "false") +
             ", \"inverted\": " + (c.rovesciata ? "true" : "false") + "}" + (k + 1 < r.celle.size() ? ",\n" : "\n");
    }
    s += "  ],\n  \"scale_min\": " + Numero(r.scalaMin, "%.17g") + ",\n  \"scale_max\": " + Numero(r.scalaMax, "%.17g") +
         ",\n  \"rotation_min\": " + Numero(r.rotazioneMin, "%.17g") + ",\n  \"rotation_max\": " +
         Numero(r.rotazioneMax, "%.17g") + ",\n  \"warnings\": " + ListaJson(r.avvisi) + "\n}\n";
    return s;
}
