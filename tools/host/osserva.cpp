#include "osserva.h"

#include <csignal>
#include <thread>

#include "link/iodev.h"
#include "platform/toldeko/testo_reale.h"
#include "record_predefiniti.h"

namespace {

volatile std::sig_atomic_t interrotto = 0;
void Interrompi(int) { interrotto = 1; }

constexpr std::chrono::milliseconds passoMosse(250);
// A streaming tablet sends many reports a second; this long without one,
// something is wrong.
constexpr std::chrono::seconds silenzio(3);

std::string Terreno(double est, double nord)
{
    return " -> East " + TestoReale(est) + " North " + TestoReale(nord);
}

}  // namespace

TOsservatore::TOsservatore(CDigit& d, std::FILE* o) : digit(d), out(o), calibrato(d.IsCalibrato()) {}

std::string TOsservatore::Terra(std::int32_t x, std::int32_t y) const
{
    double est = 0, nord = 0;
    if (calibrato && digit.CalcoloCoordTrasfCalibrFine(x, y, est, nord)) return Terreno(est, nord);
    return {};
}

void TOsservatore::Sentito() { ultimoReport = std::chrono::steady_clock::now().time_since_epoch().count(); }

void TOsservatore::NotifyMove(std::int32_t x, std::int32_t y)
{
    Sentito();
    ++mosse;
    const auto adesso = std::chrono::steady_clock::now();
    std::lock_guard<std::mutex> g(mutex);
    if (adesso - ultimaMossa < passoMosse) return;
    ultimaMossa = adesso;
    std::fprintf(out, "move     x %6d y %6d%s\n", x, y, Terra(x, y).c_str());
    std::fflush(out);
}

void TOsservatore::NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y)
{
    Sentito();
    const int n = ++pressioni;
    const int funzione = digit.GetFunzButt(button);
    std::string terra;
    if (calibrato) {
        // The ground point of the report just decoded, as a host does it
        // inside the notification.
        double est = 0, nord = 0;
        int b = 0;
        if (digit.TrasformaCoordDigit(est, nord, b)) terra = Terreno(est, nord);
    }
    std::lock_guard<std::mutex> g(mutex);
    std::fprintf(out, "press %3d: x %6d y %6d%s, button %d %s\n", n, x, y, terra.c_str(), button,
                 NomeFunzione(funzione).c_str());
    std::fflush(out);
}

bool Osserva(CDigit& digit, int conteggio, double secondi, TTerminale* terminale, std::FILE* out)
{
    if (!digit.Init(nullptr)) {
        std::fprintf(stderr, "velmarin-host: the tablet's port could not be opened\n");
        return false;
    }
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
    bool taciuto = false;  // the silence was told of
    bool persa = false;    // the loss of the line was told of
    for (;;) {
        if (interrotto || (conteggio > 0 && osservatore.Pressioni() >= conteggio)) break;
        if ((IODevStatoLinea() == lineaPersa) != persa) {
            persa = !persa;
            std::fprintf(out, persa ? "-- the tablet's line is gone: its port failed (a USB adapter pulled, the "
                                      "device closed); plug it back and connect again\n"
                                    : "-- the tablet's line works again\n");
            std::fflush(out);
        }
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
            const auto ultimo = osservatore.UltimoReport();
            const bool sentito = ultimo.time_since_epoch().count() != 0;
            if (adesso - (sentito ? ultimo : inizio) < silenzio) {
                if (taciuto) std::fprintf(out, "-- the tablet reports again\n");
                taciuto = false;
            } else if (!taciuto) {
                taciuto = true;
                std::fprintf(out, sentito ? "-- no report for %d s from a tablet that was sending: the line hung up, or "
                                            "nothing arrives (cable, power, port, settings)\n"
                                          : "-- nothing heard from the tablet in %d s: check its cable, power, port and "
                                            "settings (model, speed, parity)\n",
                             static_cast<int>(silenzio.count()));
            }
            std::fflush(out);
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
    if (osservatore.UltimoReport().time_since_epoch().count() != 0) return true;
    std::fprintf(stderr, "velmarin-host: nothing was heard from the tablet\n");
    return false;
}
