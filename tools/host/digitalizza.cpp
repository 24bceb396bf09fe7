#include "digitalizza.h"

#include <chrono>
#include <csignal>
#include <ctime>

namespace {

volatile std::sig_atomic_t fermato = 0;
void Ferma(int) { fermato = 1; }

std::string Adesso()
{
    const auto t = std::chrono::system_clock::now();
    const std::time_t s = std::chrono::system_clock::to_time_t(t);
    const long ms = static_cast<long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(t.time_since_epoch()).count() % 1000);
    std::tm u{};
    gmtime_r(&s, &u);
    char b[64];
    std::snprintf(b, sizeof b, "%04d-%02d-%02dT%02d:%02d:%02d.%03ldZ", u.tm_year + 1900, u.tm_mon + 1, u.tm_mday,
                  u.tm_hour, u.tm_min, u.tm_sec, ms);
    return b;
}

}  // namespace

TDigitalizzatore::TDigitalizzatore(CDigit& d, TUscitaGis& u, double passo, std::FILE* o)
    : digit(d), uscita(u), out(o), sessione(*this)
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
    oraInizio = Adesso();
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

void TDigitalizzatore::ScriviFiniti(int ms)
{
    std::vector<TElementoGis> daScrivere;
    {
        std::unique_lock<std::mutex> g(mutex);
        finiti.wait_for(g, std::chrono::milliseconds(ms), [this] { return !coda.empty() || finita; });
        daScrivere.swap(coda);
    }
    for (const TElementoGis& e : daScrivere) {
        std::string errore;
        if (!uscita.Scrivi(e, errore)) {
            std::fprintf(out, "velmarin-host: the %s is lost: %s\n", NomeGenere(e.genere), errore.c_str());
            std::fflush(out);
            continue;
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
}

// Called with the lock held.
void TDigitalizzatore::Avviso(const std::string& testo)
{
    std::fprintf(out, "note: %s\n", testo.c_str());
    std::fflush(out);
}

bool Digitalizza(CDigit& digit, const TOpzioniGis& o, double passo, TTerminale* terminale, std::FILE* out,
                 std::string& errore)
{
    if (!TUscitaGis::Disponibile()) {
        TUscitaGis().Apri(o, errore);
        return false;
    }
    if (!digit.IsCalibrato()) {
        errore = "digitize needs a calibrated tablet: calibrate points or calibrate grid comes before it";
        return false;
    }
    TUscitaGis uscita;
    if (!uscita.Apri(o, errore)) return false;
    if (!digit.Init(nullptr)) {
        errore = "the tablet's port could not be opened";
        return false;
    }
    digit.SendInitString();
    TDigitalizzatore digitalizzatore(digit, uscita, passo, out);
    fermato = 0;
    void (*primaInt)(int) = std::signal(SIGINT, Ferma);
    void (*primaTerm)(int) = std::signal(SIGTERM, Ferma);
    digit.SetCommNotificationTo(&digitalizzatore);
    std::fprintf(out, "digitizing into %s (%s)\nfeatures follow with East North; q, Escape or Ctrl-C stops\n",
                 o.percorso.c_str(), uscita.Descrizione().c_str());
    std::fflush(out);
    while (!fermato && !digitalizzatore.Finita()) {
        if (terminale && terminale->Attivo()) {
            digitalizzatore.ScriviFiniti(0);
            const TLettura t = terminale->LeggiTasto(50);
            if (t.tasto == TTasto::esc || t.tasto == TTasto::fine ||
                (t.tasto == TTasto::carattere && (t.carattere == 'q' || t.carattere == 'Q')))
                break;
        } else {
            digitalizzatore.ScriviFiniti(50);
        }
    }
    digit.StopCommNotification();
    digitalizzatore.Chiudi();
    digitalizzatore.ScriviFiniti(0);
    std::signal(SIGINT, primaInt);
    std::signal(SIGTERM, primaTerm);
    std::fprintf(out, "-- end: %d features written to %s\n", digitalizzatore.Scritti(), o.percorso.c_str());
    std::fflush(out);
    return true;
}
