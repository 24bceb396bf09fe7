#include "osserva.h"

#include <csignal>
#include <thread>

#include "record_predefiniti.h"

namespace {

volatile std::sig_atomic_t interrotto = 0;
void Interrompi(int) { interrotto = 1; }

constexpr std::chrono::milliseconds passoMosse(250);

}  // namespace

TOsservatore::TOsservatore(CDigit& d, std::FILE* o) : digit(d), out(o), calibrato(d.IsCalibrato()) {}

void TOsservatore::Terra(std::int32_t x, std::int32_t y, char* testo, std::size_t dimensione) const
{
    double est = 0, nord = 0;
    testo[0] = '\0';
    if (calibrato && digit.CalcoloCoordTrasfCalibrFine(x, y, est, nord))
        std::snprintf(testo, dimensione, " -> East %.3f North %.3f", est, nord);
}

void TOsservatore::NotifyMove(std::int32_t x, std::int32_t y)
{
    ++mosse;
    const auto adesso = std::chrono::steady_clock::now();
    std::lock_guard<std::mutex> g(mutex);
    if (adesso - ultimaMossa < passoMosse) return;
    ultimaMossa = adesso;
    char terra[96];
    Terra(x, y, terra, sizeof terra);
    std::fprintf(out, "move     x %6d y %6d%s\n", x, y, terra);
    std::fflush(out);
}

void TOsservatore::NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y)
{
    const int n = ++pressioni;
    const int funzione = digit.GetFunzButt(button);
    char terra[96] = "";
    if (calibrato) {
        // The ground point of the report just decoded, as a host does it
        // inside the notification.
        double est = 0, nord = 0;
        int b = 0;
        if (digit.TrasformaCoordDigit(est, nord, b))
            std::snprintf(terra, sizeof terra, " -> East %.3f North %.3f", est, nord);
    }
    std::lock_guard<std::mutex> g(mutex);
    std::fprintf(out, "press %3d: x %6d y %6d%s, button %d %s\n", n, x, y, terra, button, NomeFunzione(funzione).c_str());
    std::fflush(out);
}

bool Osserva(CDigit& digit, int conteggio, double secondi, TTerminale* terminale, std::FILE* out)
{
    if (!digit.Init(nullptr)) return false;
    digit.SendInitString();
    TOsservatore osservatore(digit, out);
    interrotto = 0;
    void (*prima)(int) = std::signal(SIGINT, Interrompi);
    digit.SetCommNotificationTo(&osservatore);
    std::fprintf(out, "watching the tablet%s; q, Escape or Ctrl-C stops\n",
                 digit.IsCalibrato() ? " (calibrated: East and North follow the counts)" : "");
    std::fflush(out);

    const auto inizio = std::chrono::steady_clock::now();
    auto riepilogo = inizio;
    int ultimi = 0;
    for (;;) {
        if (interrotto || (conteggio > 0 && osservatore.Pressioni() >= conteggio)) break;
        const auto adesso = std::chrono::steady_clock::now();
        if (secondi > 0 && adesso - inizio >= std::chrono::duration<double>(secondi)) break;
        if (adesso - riepilogo >= std::chrono::seconds(1)) {
            const int tutti = osservatore.Mosse() + osservatore.Pressioni();
            const double dt = std::chrono::duration<double>(adesso - riepilogo).count();
            std::fprintf(out, "-- %d moves, %d presses, %.1f reports/s\n", osservatore.Mosse(),
                         osservatore.Pressioni(), (tutti - ultimi) / dt);
            std::fflush(out);
            ultimi = tutti;
            riepilogo = adesso;
        }
        if (terminale && terminale->Attivo()) {
            const TLettura t = terminale->LeggiTasto(50);
            if (t.tasto == TTasto::esc || t.tasto == TTasto::fine ||
                (t.tasto == TTasto::carattere && (t.carattere == 'q' || t.carattere == 'Q')))
                break;
        } else {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    }
    digit.StopCommNotification();
    std::signal(SIGINT, prima);
    std::fprintf(out, "-- end: %d moves, %d presses\n", osservatore.Mosse(), osservatore.Pressioni());
    std::fflush(out);
    return true;
}
