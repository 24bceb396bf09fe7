#include "calibration/rapporto_calibrazione.h"

#include "calibration/calibrazione_in_vigore.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double nessuno = std::numeric_limits<double>::quiet_NaN();

// The least-squares affine map of the points but one, on counts and ground
// centred on their means: the normal equations split into the means and a
// 2 by 2 system, and no sum mixes a count with a UTM-sized coordinate.
struct TAffine {
    double n = 0, xm = 0, ym = 0, em = 0, nm = 0;
    double i11 = 0, i12 = 0, i22 = 0;  // inverse of the counts' scatter
    double e1 = 0, e2 = 0, d1 = 0, d2 = 0;

    // Given minus mapped, East and North.
    double ResiduoEst(const TPuntoControllo& p) const { return (p.est - em) - (e1 * (p.x - xm) + e2 * (p.y - ym)); }
    double ResiduoNord(const TPuntoControllo& p) const { return (p.nord - nm) - (d1 * (p.x - xm) + d2 * (p.y - ym)); }
    // The fit's leverage at (x, y).
    double Leva(double x, double y) const
    {
        const double ax = x - xm, ay = y - ym;
        return 1 / n + ax * (i11 * ax + i12 * ay) + ay * (i12 * ax + i22 * ay);
    }
};

bool Adatta(const std::vector<TPuntoControllo>& p, int escluso, TAffine& a)
{
    a = TAffine{};
    for (int k = 0; k < static_cast<int>(p.size()); ++k) {
        if (k == escluso) continue;
        a.n += 1;
        a.xm += p[k].x, a.ym += p[k].y, a.em += p[k].est, a.nm += p[k].nord;
    }
    if (a.n < 3) return false;
    a.xm /= a.n, a.ym /= a.n, a.em /= a.n, a.nm /= a.n;
    double sxx = 0, sxy = 0, syy = 0, sxe = 0, sye = 0, sxn = 0, syn = 0;
    for (int k = 0; k < static_cast<int>(p.size()); ++k) {
        if (k == escluso) continue;
        const double dx = p[k].x - a.xm, dy = p[k].y - a.ym, de = p[k].est - a.em, dn = p[k].nord - a.nm;
        sxx += dx * dx, sxy += dx * dy, syy += dy * dy;
        sxe += dx * de, sye += dy * de, sxn += dx * dn, syn += dy * dn;
    }
    const double det = sxx * syy - sxy * sxy;
    if (!(det > 1e-12 * (sxx + syy) * (sxx + syy))) return false;  // in a line, near enough
    a.i11 = syy / det, a.i12 = -sxy / det, a.i22 = sxx / det;
    a.e1 = a.i11 * sxe + a.i12 * sye, a.e2 = a.i12 * sxe + a.i22 * sye;
    a.d1 = a.i11 * sxn + a.i12 * syn, a.d2 = a.i12 * sxn + a.i22 * syn;
    const double tutti[] = {a.em, a.nm, a.e1, a.e2, a.d1, a.d2};
    return std::all_of(std::begin(tutti), std::end(tutti), [](double v) { return std::isfinite(v); });
}

// Smaller over larger standard spread of the counts: the square root of the
// ratio of the scatter's eigenvalues.
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

TLimiti Scatola(const std::vector<TPuntoControllo>& p)
{
    TLimiti s{true, double(p[0].x), double(p[0].y), double(p[0].x), double(p[0].y)};
    for (const TPuntoControllo& q : p) {
        s.x1 = std::min<double>(s.x1, q.x), s.y1 = std::min<double>(s.y1, q.y);
        s.x2 = std::max<double>(s.x2, q.x), s.y2 = std::max<double>(s.y2, q.y);
    }
    return s;
}

double Copertura(const TLimiti& scatola, const TLimiti& limiti)
{
    const double area = (limiti.x2 - limiti.x1) * (limiti.y2 - limiti.y1);
    if (!limiti.definiti || area == 0) return nessuno;
    return std::fabs((scatola.x2 - scatola.x1) * (scatola.y2 - scatola.y1) / area);
}

double Mediana(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    const std::size_t m = v.size() / 2;
    return v.size() % 2 ? v[m] : (v[m - 1] + v[m]) / 2;
}

// Residuals, leave-one-out, RMS, deviation and the two worst: what the two
// kinds of report share.
bool Residui(const std::vector<TPuntoControllo>& p, TRapportoCalibrazione& r, TAffine& a)
{
    if (p.size() < 3 || !Adatta(p, -1, a)) return false;
    const int n = static_cast<int>(p.size());
    double somma = 0;
    std::vector<double> lunghezze;
    for (int k = 0; k < n; ++k) {
        TResiduoPunto q{p[k], a.ResiduoEst(p[k]), a.ResiduoNord(p[k]), nessuno, nessuno};
        TAffine senza;
        if (n > 3 && Adatta(p, k, senza)) q.lasciaFuoriEst = senza.ResiduoEst(p[k]), q.lasciaFuoriNord = senza.ResiduoNord(p[k]);
        somma += q.residuoEst * q.residuoEst + q.residuoNord * q.residuoNord;
        lunghezze.push_back(std::hypot(q.residuoEst, q.residuoNord));
        r.punti.push_back(q);
    }
    r.rms = std::sqrt(somma / n);
    r.deviazione = n > 3 ? std::sqrt(somma / (2.0 * n - 6)) : nessuno;
    std::vector<int> ordine(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) ordine[static_cast<std::size_t>(k)] = k;
    std::stable_sort(ordine.begin(), ordine.end(), [&](int i, int j) { return lunghezze[i] > lunghezze[j]; });
    r.peggiori[0] = ordine[0], r.peggiori[1] = ordine[1];
    r.allineamento = Allineamento(p);
    return true;
}

bool Grossolano(const TRapportoCalibrazione& r)
{
    std::vector<double> lasciaFuori;
    for (const TResiduoPunto& q : r.punti)
        if (!std::isnan(q.lasciaFuoriEst)) lasciaFuori.push_back(std::hypot(q.lasciaFuoriEst, q.lasciaFuoriNord));
    if (lasciaFuori.size() < 5) return false;
    const double massimo = *std::max_element(lasciaFuori.begin(), lasciaFuori.end());
    return massimo > 0 && massimo > sogliaGrossolano * Mediana(lasciaFuori);
}

// How far a node lies from where its row and its column put it, in node
// spacings: the midpoint of its two neighbours, or on an edge the line
// through the next two nodes; the least of the two directions, so that a
// node beside a wrong one still has a clean direction; 0 where neither
// direction has three nodes to tell.
double ScartoNodo(const std::vector<TPuntoControllo>& nodi, int numEst, int numNord, int i, int j)
{
    auto nodo = [&](int p, int q) {
        const TPuntoControllo& n = nodi[static_cast<std::size_t>(q * (numEst + 1) + p)];
        return std::array<double, 2>{double(n.x), double(n.y)};
    };
    double minimo = std::numeric_limits<double>::infinity();
    for (const auto& [di, dj, ultimo, posto] : {std::array<int, 4>{1, 0, numEst, i}, std::array<int, 4>{0, 1, numNord, j}}) {
        if (ultimo < 2) continue;
        // The two nodes that predict it: its neighbours, or the next two inward.
        const int passo = posto == 0 ? 1 : posto == ultimo ? -1 : 0;
        const auto a = passo ? nodo(i + passo * di, j + passo * dj) : nodo(i - di, j - dj);
        const auto b = passo ? nodo(i + 2 * passo * di, j + 2 * passo * dj) : nodo(i + di, j + dj);
        const double px = passo ? 2 * a[0] - b[0] : (a[0] + b[0]) / 2, py = passo ? 2 * a[1] - b[1] : (a[1] + b[1]) / 2;
        const double spaziatura = std::hypot(a[0] - b[0], a[1] - b[1]) / (passo ? 1 : 2);
        const auto n = nodo(i, j);
        if (spaziatura > 0) minimo = std::min(minimo, std::hypot(n[0] - px, n[1] - py) / spaziatura);
    }
    return std::isinf(minimo) ? 0 : minimo;
}

}  // namespace

bool RapportoSparsi(const std::vector<TPuntoControllo>& p, const TLimiti& limiti, TRapportoCalibrazione& r)
{
    r = TRapportoCalibrazione{};
    TAffine a;
    if (!Residui(p, r, a)) {
        r = TRapportoCalibrazione{};
        return false;
    }
    r.tipo = TRapportoCalibrazione::sparsi;
    const TLimiti scatola = Scatola(p);
    r.copertura = Copertura(scatola, limiti);
    const TLimiti& zona = limiti.definiti ? limiti : scatola;
    double leva = 0;
    for (double x : {zona.x1, zona.x2})
        for (double y : {zona.y1, zona.y2}) leva = std::max(leva, a.Leva(x, y));
    r.peggiorePrevisto = r.deviazione * std::sqrt(2 * leva);  // NaN with three points
    if (r.copertura < sogliaCopertura) r.avvisi |= avvisoRaggruppati;
    if (r.allineamento < sogliaAllineamento) r.avvisi |= avvisoAllineati;
    if (Grossolano(r)) r.avvisi |= avvisoGrossolano;
    if (p.size() == 3) r.avvisi |= avvisoSenzaRidondanza;
    return true;
}

bool RapportoGriglia(const std::vector<TPuntoControllo>& nodi, int numEst, int numNord, const TLimiti& limiti,
                     TRapportoCalibrazione& r)
{
    r = TRapportoCalibrazione{};
    TAffine a;
    if (numEst < 1 || numNord < 1 || nodi.size() != std::size_t(numEst + 1) * std::size_t(numNord + 1) ||
        !Residui(nodi, r, a)) {
        r = TRapportoCalibrazione{};
        return false;
    }
    r.tipo = TRapportoCalibrazione::griglia;
    r.peggiorePrevisto = nessuno;
    r.copertura = Copertura(Scatola(nodi), limiti);
    for (int j = 0; j <= numNord; ++j)
        for (int i = 0; i <= numEst; ++i)
            if (ScartoNodo(nodi, numEst, numNord, i, j) > sogliaNodo) r.nodiFuoriPosto.push_back(j * (numEst + 1) + i);
    if (!r.nodiFuoriPosto.empty()) r.avvisi |= avvisoNodoFuoriPosto;
    return true;
}

bool RapportoDi(const CDigit& d, TRapportoCalibrazione& r)
{
    TPuntiInVigore p;
    if (!TCalibrazioneInVigore::Leggi(d, p)) {
        r = TRapportoCalibrazione{};
        return false;
    }
    if (p.numEst > 0) return RapportoGriglia(p.punti, p.numEst, p.numNord, p.limiti, r);
    return RapportoSparsi(p.punti, p.limiti, r);
}
