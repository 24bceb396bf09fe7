#include "dimostrazione.h"

#include <condition_variable>
#include <mutex>
#include <thread>

#include "digit.h"
#include "platform/toldeko/backend_script.h"
#include "record_predefiniti.h"
#include "sim/riproduttore.h"
#include "sim/tavoletta_pty.h"

namespace {

constexpr int tipoDemo = 5;
constexpr int portaDemo = 1;
constexpr int numPressioni = 100;
constexpr unsigned modelloPunto = 10040;       // the entry of a point's ground coordinates
constexpr unsigned modelloDigitalizza = 10042; // the wait for the point on the tablet
constexpr int idEst = 2000, idNord = 2001;

struct TPuntoControllo {
    std::int32_t x, y;  // tablet counts
    double est, nord;   // ground, metres
};

// Four corners of a sheet, on the ground a square of 800 m whose tablet
// image is 8000 counts a side: a tenth of a metre a count.
const TPuntoControllo punti[] = {
    {1000, 1000, 1520100.0, 5030100.0},
    {9000, 1000, 1520900.0, 5030100.0},
    {9000, 9000, 1520900.0, 5030900.0},
    {1000, 9000, 1520100.0, 5030900.0},
};

// Plays the user of the calibration: types each point's ground coordinates
// and, once the library waits for the point, has the tablet press it (again,
// should the press be lost and the wait go on); then cancels the next entry,
// which ends the calibration.
void Calibratore(TBackendScript& script, TRiproduttore& tavoletta, std::FILE* out, bool& riuscito)
{
    riuscito = false;
    if (!script.AttendiDialogo(modelloPunto)) return;
    int n = 0;
    for (const TPuntoControllo& p : punti) {
        char testo[32];
        std::snprintf(testo, sizeof testo, "%.3f", p.est);
        script.Digita(idEst, testo);
        std::snprintf(testo, sizeof testo, "%.3f", p.nord);
        script.Digita(idNord, testo);
        script.Invio();
        if (!script.AttendiDialogo(modelloDigitalizza)) return;
        std::fprintf(out, "point %d: ground East %.3f North %.3f, digitized at x %d y %d\n", ++n, p.est, p.nord,
                     p.x, p.y);
        std::fflush(out);
        bool preso = false;
        for (int prova = 0; prova < 3 && !preso; ++prova) {
            tavoletta.Premi(p.x, p.y, 1);
            preso = script.AttendiDialogo(modelloPunto, std::chrono::seconds(3));
        }
        if (!preso) return;
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
            std::fprintf(out, "press %3d: x %6d y %6d -> East %.3f North %.3f, button %d %s\n", ++stampate, x, y,
                         est, nord, button, NomeFunzione(digit.GetFunzButt(button)));
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

TDataDigit DatiDemo()
{
    TDataDigit d = RecordPredefinito(tipoDemo, portaDemo);
    d.limitiDefiniti = true;
    d.xMin = 0;
    d.yMin = 0;
    d.xMax = 10000;
    d.yMax = 10000;
    return d;
}

bool Calibra(CDigit& digit, TRiproduttore& tavoletta, std::FILE* out)
{
    TBackendScript script;
    ImpostaBackendDialoghi(&script);
    bool guidato = false;
    std::thread calibratore([&] { Calibratore(script, tavoletta, out, guidato); });
    const bool ok = digit.CalibraPtSparsi(nullptr);
    calibratore.join();
    ImpostaBackendDialoghi(nullptr);
    return ok && guidato && digit.IsCalibrato();
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
        const TDataDigit dati = DatiDemo();
        CDigit digit(dati);
        std::fprintf(out, "tablet: %s, simulated on %s (COM%d)\n", NomeModello(tipoDemo), sim.PercorsoSlave().c_str(),
                     portaDemo);
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
            std::fprintf(out, "calibrated: the limits lie from East %.3f North %.3f to East %.3f North %.3f\n", e1,
                         n1, e2, n2);
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
