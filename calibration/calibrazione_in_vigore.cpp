#include "calibration/calibrazione_in_vigore.h"

#include <cmath>
#include <cstdint>
#include <map>
#include <mutex>

#include "digit.h"

namespace {

std::mutex mutexSparsi;
std::map<const CDigit*, std::vector<TPuntoControllo>> sparsi;  // the points of each object's last sparse fit

// Node (i, j) is corner 0 of cell (i, j), 1 of cell (i, j - 1), 2 of cell
// (i - 1, j) and 3 of cell (i - 1, j - 1), as the grid stores it.
template <class T>
T Angolo(T*** tabella, int i, int j, int numEst, int numNord)
{
    const int ci = i < numEst ? i : i - 1, cj = j < numNord ? j : j - 1;
    const int angolo = (i < numEst ? 0 : 2) + (j < numNord ? 0 : 1);
    return tabella[ci][cj][angolo];
}

// The fit takes the counts as doubles; the dialogs and the C interface hand
// it whole numbers of 32 bits.
bool Conteggio(double v) { return v >= INT32_MIN && v <= INT32_MAX && v == std::floor(v); }

}  // namespace

bool TCalibrazioneInVigore::Leggi(const CDigit& d, TPuntiInVigore& p)
{
    p = TPuntiInVigore{};
    p.limiti = {d.dati.limitiDefiniti, double(d.dati.xMin), double(d.dati.yMin), double(d.dati.xMax),
                double(d.dati.yMax)};
    // The map in force, whether or not a model is chosen: a host may fit one
    // before it chooses.
    const std::int32_t stato = d.statoCalibr.load(std::memory_order_acquire);
    if (stato == calibGriglia) {
        p.numEst = d.numQuadEst, p.numNord = d.numQuadNord;
        for (int j = 0; j <= d.numQuadNord; ++j)
            for (int i = 0; i <= d.numQuadEst; ++i)
                p.punti.push_back({Angolo(d.angoliX, i, j, d.numQuadEst, d.numQuadNord),
                                   Angolo(d.angoliY, i, j, d.numQuadEst, d.numQuadNord), i * d.passoEst + d.iniEst,
                                   j * d.passoNord + d.iniNord});
        return true;
    }
    if (stato != calibPtSparsi) return false;
    std::lock_guard<std::mutex> g(mutexSparsi);
    const auto trovati = sparsi.find(&d);
    if (trovati == sparsi.end()) return false;
    p.punti = trovati->second;
    return true;
}

void TCalibrazioneInVigore::RicordaSparsi(const CDigit& d, const double* x, const double* y, const double* est,
                                          const double* nord, int n)
{
    std::vector<TPuntoControllo> punti;
    for (int k = 0; k < n; ++k) {
        if (!Conteggio(x[k]) || !Conteggio(y[k])) punti.clear();  // not counts: no report
        else punti.push_back({static_cast<std::int32_t>(x[k]), static_cast<std::int32_t>(y[k]), est[k], nord[k]});
        if (punti.empty()) break;
    }
    std::lock_guard<std::mutex> g(mutexSparsi);
    if (punti.empty()) sparsi.erase(&d);
    else sparsi[&d] = std::move(punti);
}

void TCalibrazioneInVigore::Copia(const CDigit& da, const CDigit& a)
{
    std::lock_guard<std::mutex> g(mutexSparsi);
    const auto trovati = sparsi.find(&da);
    if (trovati == sparsi.end()) sparsi.erase(&a);
    else sparsi[&a] = trovati->second;
}

void TCalibrazioneInVigore::Dimentica(const CDigit& d)
{
    std::lock_guard<std::mutex> g(mutexSparsi);
    sparsi.erase(&d);
}
