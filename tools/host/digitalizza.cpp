#include "digitalizza.h"

#include <chrono>
#include <csignal>

#include "link/ultimo_errore.h"

namespace {

volatile std::sig_atomic_t fermato = 0;
void Ferma(int) { fermato = 1; }

}  // namespace

TDigitalizzatore::TDigitalizzatore(CDigit& d, TUscitaGis& u, double passo, const std::string& calibrazione,
                                   std::FILE* o)
    : digit(d), uscita(u), out(o), calibrazione(calibrazione), sessione(*this)
{
    sessione.Imposta(passo, TSessioneDigitalizzazione::tolleranzaPredefinita);
}

void TDigitalizzatore::NotifyMove(std::int32_t x, std::int32_t y)
{
    double est = 0, nord = 0;
    if (!digit.CalcoloCoordTrasfCalibrFine(x, y, est, nord)) return;
    std::lock_guard<std::mutex> g(mutex);
    sessione.Mossa({est, nord});
}

void TDigitalizzatore::NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y)
{
    double est = 0, nord = 0;
    if (!digit.CalcoloCoordTrasfCalibrFine(x, y, est, nord)) return;
    const int funzione = digit.GetFunzButt(button);
    std::lock_guard<std::mutex> g(mutex);
    if (funzione == funzNessuna) Avviso("button " + std::to_string(button) + " has no function");
    sessione.Pressione(button, funzione, x, y, {est, nord});
}

void TDigitalizzatore::Chiudi()
{
    std::lock_guard<std::mutex> g(mutex);
    sessione.Termina();
}

bool TDigitalizzatore::Finita() const
{
    std::lock_guard<std::mutex> g(mutex);
    return finita;
}

int TDigitalizzatore::Scritti() const
{
    std::lock_guard<std::mutex> g(mutex);
    return scritti;
}

void TDigitalizzatore::Iniziato(const TElemento& e)
{
    oraInizio = std::chrono::system_clock::now();
    if (e.genere == TGenere::punto) return;
    char dove[96];
    std::snprintf(dove, sizeof dove, " open at %.3f %.3f", e.vertici[0].est, e.vertici[0].nord);
    Avviso(NomeGenere(e.genere) + std::string(dove));
}

void TDigitalizzatore::Finito(const TElemento& e)
{
    TElementoGis g;
    static_cast<TElemento&>(g) = e;
    g.ora = oraInizio;
    g.calibrazione = calibrazione;
    coda.push_back(std::move(g));
    finiti.notify_one();
}

void TDigitalizzatore::Scartato(const TElemento& e)
{
    Avviso(std::string("a ") + NomeGenere(e.genere) + " of one vertex is dropped");
}

void TDigitalizzatore::SessioneFinita()
{
    finita = true;
    finiti.notify_one();
}

bool TDigitalizzatore::ScriviFiniti(int ms, std::string& errore)
{
    std::vector<TElementoGis> daScrivere;
    {
        std::unique_lock<std::mutex> g(mutex);
        finiti.wait_for(g, std::chrono::milliseconds(ms), [this] { return !coda.empty() || finita; });
        daScrivere.swap(coda);
    }
    for (std::size_t k = 0; k < daScrivere.size(); ++k) {
        const TElementoGis& e = daScrivere[k];
        if (!uscita.Scrivi(e, errore)) {
            // The file keeps what was committed; the features from here on
            // are said, so the user knows what to digitize again.
            errore += "\nnot written: " + std::to_string(daScrivere.size() - k) + " feature(s) from this " +
                      NomeGenere(e.genere) + " on";
            return false;
        }
        int n;
        {
            std::lock_guard<std::mutex> g(mutex);
            n = ++scritti;
        }
        const TVertice& a = e.vertici.front();
        if (e.genere == TGenere::punto) {
            std::fprintf(out, "feature %d: point %.3f %.3f, button %d %s\n", n, a.est, a.nord, e.bottone,
                         NomeCodiceFunzione(e.funzione));
        } else {
            const TVertice& b = e.vertici.back();
            std::fprintf(out, "feature %d: %s, %zu vertices, %.3f %.3f to %.3f %.3f\n", n, NomeGenere(e.genere),
                         e.vertici.size(), a.est, a.nord, b.est, b.nord);
        }
        std::fflush(out);
    }
    return true;
}

// Called with the lock held.
void TDigitalizzatore::Avviso(const std::string& testo)
{
    std::fprintf(out, "note: %s\n", testo.c_str());
    std::fflush(out);
}

namespace {

std::string Elenco(const std::vector<std::string>& v)
{
    std::string s;
    for (std::size_t i = 0; i < v.size(); ++i) s += (i ? ", " : "") + v[i];
    return s;
}

}  // namespace

bool Digitalizza(CDigit& digit, const TOpzioniGis& o, double passo, const std::string& calibrazione,
                 TTerminale* terminale, std::FILE* out, std::string& errore)
{
    if (!TUscitaGis::Disponibile()) return TUscitaGis::Verifica(o, errore);
    if (!digit.IsCalibrato()) {
        errore = "digitize needs a calibrated tablet: calibrate points or calibrate grid comes before it";
        return false;
    }
    TUscitaGis uscita;
    if (!uscita.Apri(o, errore)) return false;
    if (!digit.Init(nullptr)) {
        errore = std::string("the tablet's port could not be opened: ") + TestoUltimoErrore();
        return false;
    }
    digit.SendInitString();
    TDigitalizzatore digitalizzatore(digit, uscita, passo, calibrazione, out);
    fermato = 0;
    void (*primaInt)(int) = std::signal(SIGINT, Ferma);
    void (*primaTerm)(int) = std::signal(SIGTERM, Ferma);
    digit.SetCommNotificationTo(&digitalizzatore);
    std::fprintf(out, "digitizing into %s (%s), calibration %s\nfeatures follow with East North; q, Escape or Ctrl-C stops\n",
                 Elenco(uscita.File()).c_str(), uscita.Descrizione().c_str(), calibrazione.c_str());
    std::fflush(out);
    bool scritto = true;
    while (scritto && !fermato && !digitalizzatore.Finita()) {
        if (terminale && terminale->Attivo()) {
            scritto = digitalizzatore.ScriviFiniti(0, errore);
            const TLettura t = terminale->LeggiTasto(50);
            if (t.tasto == TTasto::esc || t.tasto == TTasto::fine ||
                (t.tasto == TTasto::carattere && (t.carattere == 'q' || t.carattere == 'Q')))
                break;
        } else {
            scritto = digitalizzatore.ScriviFiniti(50, errore);
        }
    }
    digit.StopCommNotification();
    digitalizzatore.Chiudi();
    if (scritto) scritto = digitalizzatore.ScriviFiniti(0, errore);
    std::signal(SIGINT, primaInt);
    std::signal(SIGTERM, primaTerm);
    std::fprintf(out, "-- %s: %d features written to %s\n", scritto ? "end" : "stopped", digitalizzatore.Scritti(),
                 Elenco(uscita.File()).c_str());
    std::fflush(out);
    if (!scritto) errore = "digitizing stopped: " + errore;
    return scritto;
}
