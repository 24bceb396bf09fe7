#include "dimostrazione.h"

#include <condition_variable>
#include <string>
#include <mutex>
#include <thread>

#include "calibration/rapporto_calibrazione.h"
#include "dialogs/dialogo_digitalizza.h"
#include "dialogs/dialogo_limiti.h"
#include "dialogs/dialogo_punti_sparsi.h"
#include "dialogs/dialogo_scelta_tavoletta.h"
#include "digit.h"
#include "configura.h"
#include "platform/toldeko/backend_script.h"
#include "platform/toldeko/testo_reale.h"
#include "record_predefiniti.h"
#include "sim/riproduttore.h"
#include "sim/tavoletta_pty.h"

namespace {

constexpr int tipoDemo = 5;
constexpr int portaDemo = 1;
constexpr int numPressioni = 100;
constexpr int idEst = 2000, idNord = 2001;
constexpr int idTipo = 2120, idPrimaPorta = 2122, idLimiti = 2151;
constexpr int idRichiestaAngolo = 2240;
constexpr int bottoneConferma = 1;  // the library's default functions: button 1 confirms

struct TAngolo {
    std::int32_t x, y;
};
// The tablet's working area, lower left first.
constexpr TAngolo angoli[] = {{0, 0}, {10000, 10000}};

// Four corners of a sheet, on the ground a square of 800 m whose tablet
// image is 8000 counts a side: a tenth of a metre a count.
const TPuntoControllo punti[] = {
    {1000, 1000, 1520100.0, 5030100.0},
    {9000, 1000, 1520900.0, 5030100.0},
    {9000, 9000, 1520900.0, 5030900.0},
    {1000, 9000, 1520100.0, 5030900.0},
};

// Presses until `fatto` says the dialog took the press: a press lost on a
// busy machine (the line drops a gather it cannot read whole) is pressed again.
template <class Fatto>
bool PremiFinche(TRiproduttore& tavoletta, std::int32_t x, std::int32_t y, int bottone, Fatto fatto)
{
    for (int prova = 0; prova < 3; ++prova) {
        tavoletta.Premi(x, y, bottone);
        if (fatto()) return true;
    }
    return false;
}

// Plays the user of the tablet selection: picks the model from the list and
// the port, opens "Limiti", digitizes the two corners with the confirming
// button and accepts the choice.
void Configuratore(TBackendScript& script, TRiproduttore& tavoletta, std::FILE* out, bool& riuscito)
{
    riuscito = false;
    if (!script.AttendiDialogo(modelloSceltaTavoletta)) return;
    script.Scegli(idTipo, tipoDemo);
    script.Clic(idPrimaPorta + portaDemo - 1);
    script.Clic(idLimiti);
    if (!script.AttendiDialogo(modelloLimiti)) return;
    for (const TAngolo& a : angoli) {
        const std::string prompt = script.Corrente().Testo(idRichiestaAngolo);
        std::fprintf(out, "limits: \"%s\" digitized at x %d y %d\n", prompt.c_str(), a.x, a.y);
        std::fflush(out);
        const auto preso = [&](const TStatoDialogo& s) {
            return s.modello != modelloLimiti || s.Testo(idRichiestaAngolo) != prompt;
        };
        if (!PremiFinche(tavoletta, a.x, a.y, bottoneConferma,
                         [&] { return script.AttendiMostrato(preso, std::chrono::seconds(3)); }))
            return;
    }
    if (!script.AttendiDialogo(modelloSceltaTavoletta)) return;
    script.Invio();
    riuscito = script.AttendiNessuno();
}

// Plays the user of the calibration: types each point's ground coordinates
// and, once the library waits for the point, has the tablet press it (again,
// should the press be lost and the wait go on); then cancels the next entry,
// which ends the calibration.
void Calibratore(TBackendScript& script, TRiproduttore& tavoletta, std::FILE* out, bool& riuscito)
{
    riuscito = false;
    if (!script.AttendiDialogo(modelloPuntiSparsi)) return;
    int n = 0;
    for (const TPuntoControllo& p : punti) {
        char testo[32];
        std::snprintf(testo, sizeof testo, "%.3f", p.est);
        script.Digita(idEst, testo);
        std::snprintf(testo, sizeof testo, "%.3f", p.nord);
        script.Digita(idNord, testo);
        script.Invio();
        if (!script.AttendiDialogo(modelloDigitalizza)) return;
        std::fprintf(out, "point %d: ground East %s North %s, digitized at x %d y %d\n", ++n, TestoReale(p.est).c_str(),
                     TestoReale(p.nord).c_str(), p.x, p.y);
        std::fflush(out);
        if (!PremiFinche(tavoletta, p.x, p.y, bottoneConferma,
                         [&] { return script.AttendiDialogo(modelloPuntiSparsi, std::chrono::seconds(3)); }))
            return;
    }
    script.Esc();
    riuscito = true;
}

// Prints each press in ground coordinates and counts them.
class TStampaTerra : public CDigitNtfy {
public:
    TStampaTerra(CDigit& d, std::FILE* o) : digit(d), out(o) {}
    void NotifyMove(std::int32_t, std::int32_t) override {}
    void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override
    {
        double est = 0, nord = 0;
        int b = 0;
        const bool ok = digit.TrasformaCoordDigit(est, nord, b);
        std::lock_guard<std::mutex> g(mutex);
        if (!ok) {
            std::fprintf(out, "press at x %d y %d: no ground coordinates\n", x, y);
        } else {
            std::fprintf(out, "press %3d: x %6d y %6d -> East %s North %s, button %d %s\n", ++stampate, x, y,
                         TestoReale(est).c_str(), TestoReale(nord).c_str(), button,
                         NomeFunzione(digit.GetFunzButt(button)).c_str());
        }
        std::fflush(out);
        cv.notify_all();
    }
    bool Attendi(int quante, std::chrono::seconds limite)
    {
        std::unique_lock<std::mutex> g(mutex);
        return cv.wait_for(g, limite, [&] { return stampate >= quante; });
    }

private:
    CDigit& digit;
    std::FILE* out;
    std::mutex mutex;
    std::condition_variable cv;
    int stampate = 0;
};

// Runs `passo` on this thread while `utente` plays the person at the
// dialogs on another; true when both went through.
template <class Passo, class Utente>
bool ConDialoghi(Passo passo, Utente utente)
{
    TBackendScript script;
    ImpostaBackendDialoghi(&script);
    bool guidato = false;
    std::thread persona([&] { utente(script, guidato); });
    const bool ok = passo();
    persona.join();
    ImpostaBackendDialoghi(nullptr);
    return ok && guidato;
}

bool Sceglie(CDigit& digit, TDataDigit& dati, TRiproduttore& tavoletta, std::FILE* out)
{
    return ConDialoghi([&] { return Configura(digit, dati) == 1 && dati.limitiDefiniti; },
                       [&](TBackendScript& s, bool& r) { Configuratore(s, tavoletta, out, r); });
}

bool Calibra(CDigit& digit, TRiproduttore& tavoletta, std::FILE* out)
{
    return ConDialoghi([&] { return digit.CalibraPtSparsi(nullptr) && digit.IsCalibrato(); },
                       [&](TBackendScript& s, bool& r) { Calibratore(s, tavoletta, out, r); });
}

}  // namespace

int Dimostrazione(std::FILE* out)
{
    TTavolettaPty sim(portaDemo);
    if (!sim.Valida()) {
        std::fprintf(stderr, "velmarin-host: cannot open a pseudo-terminal for the simulated tablet\n");
        return 1;
    }
    TRiproduttore tavoletta(sim, tipoDemo, std::chrono::milliseconds(10));
    tavoletta.Avvia();
    {
        CDigit digit;
        TDataDigit dati;
        digit.GetDataDigit(dati);
        std::fprintf(out, "tablet: %s, simulated on %s (COM%d)\n", NomeModello(tipoDemo), sim.PercorsoSlave().c_str(),
                     portaDemo);
        std::fprintf(out, "choosing the tablet and digitizing its limits...\n");
        std::fflush(out);
        if (!Sceglie(digit, dati, tavoletta, out)) {
            std::fprintf(stderr, "velmarin-host: the tablet selection did not go through\n");
            return 1;
        }
        std::fprintf(out, "set up: %d baud, parity %c, %d data bits, %d stop bits, %d buttons\n", dati.velocita,
                     dati.parita, dati.bitDati, dati.bitStop, dati.numBottoni);
        std::fprintf(out, "limits: x %d to %d, y %d to %d\n", dati.xMin, dati.xMax, dati.yMin, dati.yMax);
        std::fprintf(out, "calibrating by four points...\n");
        std::fflush(out);
        if (!Calibra(digit, tavoletta, out)) {
            std::fprintf(stderr, "velmarin-host: the calibration did not go through\n");
            return 1;
        }
        double e1 = 0, n1 = 0, e2 = 0, n2 = 0;
        if (digit.GetMaxAreaCalibrata(e1, n1, e2, n2))
            std::fprintf(out, "calibrated: the limits lie from East %s North %s to East %s North %s\n",
                         TestoReale(e1).c_str(), TestoReale(n1).c_str(), TestoReale(e2).c_str(),
                         TestoReale(n2).c_str());
        std::fflush(out);

        TStampaTerra stampa(digit, out);
        digit.SetCommNotificationTo(&stampa);
        // One press at a time, each awaited: a press lost on a busy machine
        // (the line drops a gather it cannot read whole) is pressed again.
        bool tutte = true;
        for (int i = 0; i < numPressioni && tutte; ++i) {
            tutte = false;
            for (int prova = 0; prova < 3 && !tutte; ++prova) {
                tavoletta.Premi(1500 + (i % 10) * 700, 1500 + (i / 10) * 700, 1 + i % 4);
                tutte = stampa.Attendi(i + 1, std::chrono::seconds(3));
            }
        }
        digit.StopCommNotification();
        if (!tutte) {
            std::fprintf(stderr, "velmarin-host: the tablet's presses did not all arrive\n");
            return 1;
        }
        std::fprintf(out, "done: %d presses in ground coordinates\n", numPressioni);
    }
    tavoletta.Ferma();
    return 0;
}
