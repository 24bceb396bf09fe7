// Where the tablet is: a serial device the user named, checked by the
// library before any dialog so that a missing or busy device is told at once, or
// the built-in simulated tablet on a pseudo-terminal in this process. Either
// way the device is mapped to COM<porta>, the port of the host's record.
#ifndef VELMARIN_HOST_COLLEGAMENTO_H
#define VELMARIN_HOST_COLLEGAMENTO_H

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "argomenti.h"
#include "digit.h"
#include "sim/riproduttore.h"
#include "sim/tavoletta_pty.h"

struct TPuntoSimulato {
    std::int32_t x, y;
};
// Where the simulated tablet digitizes the n-th point of a calibration (from
// 0): the first nine at the nodes of a 2 by 2 grid, x and y from 2000 to 8000
// counts, in the order a grid calibration asks them (East along x) or, for
// sparse points, corners first; then at scattered points.
TPuntoSimulato PuntoSimulato(int n, bool griglia);

class TCollegamento {
public:
    // The simulated tablet shows each state for `passo`, and walks the nine
    // nodes of a grid of 2 by 2 squares, x from 2000 to 8000 counts and y
    // likewise, pressing button 1 on each.
    bool Prepara(const TOpzioniHost& o, std::chrono::milliseconds passo, std::string& errore);
    // The record the host connects with: the model's own line settings (a
    // pseudo-terminal carries them all alike). The built-in tablet has
    // limits 0 to 10000 on both axes; --limits sets those of any tablet.
    TDataDigit Record(const TOpzioniHost& o) const;
    // During a calibration the simulated tablet stands still and presses
    // only when a point is asked for (PuntoRichiesto), two seconds later so
    // that a person sees the request, where PuntoSimulato says. With a real
    // tablet the points are only counted.
    void Calibrazione(bool in, bool griglia = false);
    void PuntoRichiesto();
    // When the limits are asked for, the simulated tablet glides to the
    // lower left and then the upper right corner of the grid it walks
    // (2000 and 8000 counts on both axes) and presses button 1 at each.
    void LimitiRichiesti();
    // The tablet is set up as `dati` says from now on: the built-in one,
    // plugged into every port, restarts as that model and presses the
    // button whose function is Conferma; the description follows.
    void Segui(const TDataDigit& dati);
    // Called with the new description whenever it changes.
    void AlCambio(std::function<void(const std::string&)> f) { alCambio = std::move(f); }
    std::string Descrizione() const { return descrizione; }
    bool Simulata() const { return simulata != nullptr; }
    // The calibration under way, and how many points it has asked for.
    bool InCalibrazione() const { return inCalibrazione; }
    bool PerGriglia() const { return perGriglia; }
    int PuntiChiesti() const { return punto; }

private:
    void Riproduci(int tipo);

    std::unique_ptr<TTavolettaPty> simulata;
    std::unique_ptr<TRiproduttore> riproduttore;
    std::string descrizione;
    std::string dispositivo;  // a real tablet's device
    int portaDispositivo = 0;  // and the port it is mapped to
    int tipo = 0;
    int bottoneConferma = 1;
    std::chrono::milliseconds passo{0};
    std::function<void(const std::string&)> alCambio;
    std::atomic<bool> inCalibrazione{false};
    std::atomic<bool> perGriglia{false};
    std::atomic<int> punto{0};
};

#endif
