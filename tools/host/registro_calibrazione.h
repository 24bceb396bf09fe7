// What a calibration was made of, as the host sees it through the library's
// exported interface and the dialog backend it owns: the ground coordinates
// typed in the entry dialogs, read from their fields when they end with OK,
// and the tablet counts of each digitized point, heard by a target of the
// host that stands between the library and the digitizing dialog while that
// dialog is open (it forwards everything). The library's fitted map is read
// separately, through CalcoloCoordTrasfCalibrFine.
//
// Install it over the backend in use for the length of one calibration.
#ifndef VELMARIN_HOST_REGISTRO_CALIBRAZIONE_H
#define VELMARIN_HOST_REGISTRO_CALIBRAZIONE_H

#include <cstdint>
#include <mutex>
#include <vector>

#include "digit.h"
#include "platform/toldeko/backend_dialoghi.h"

struct TPuntoControllo {
    double est, nord;       // ground, as typed (a grid's node as computed)
    std::int32_t x, y;      // tablet counts as digitized
};

struct TParametriGriglia {
    int numQuadEst = 0, numQuadNord = 0;
    double iniEst = 0, iniNord = 0, passoEst = 0, passoNord = 0;
};

class TRegistroCalibrazione : public TBackendDialoghi {
public:
    TRegistroCalibrazione(TBackendDialoghi& avanti, CDigit& digit);
    ~TRegistroCalibrazione() override;

    void Aperto(TFinestraDialogo& finestra) override;
    void Chiuso(TFinestraDialogo& finestra) override;
    std::chrono::milliseconds Inattivo(TFinestraDialogo& finestra) override;
    void Cambiato(TFinestraDialogo& finestra) override;
    void Creato(TFinestraDialogo& finestra) override;
    void Svegliato(TFinestraDialogo& finestra) override;

    // The points in the order they were digitized; for a grid, node (i, j)
    // is point i·(numQuadNord + 1) + j, as the library asks for them.
    const std::vector<TPuntoControllo>& Punti() const { return punti; }
    const TParametriGriglia& Griglia() const { return griglia; }
    // Digitizing dialogs that ended with OK but whose press was not heard.
    int Persi() const { return persi; }

private:
    class TInoltro : public CDigitNtfy {
    public:
        explicit TInoltro(CDigit& d) : digit(d) {}
        void NotifyMove(std::int32_t x, std::int32_t y) override;
        void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override;
        void Davanti(CDigitNtfy* dialogo);
        // The counts of the last funzConferma press; false if none came.
        bool Confermato(std::int32_t& x, std::int32_t& y);

    private:
        CDigit& digit;
        std::mutex mutex;
        CDigitNtfy* dialogo = nullptr;
        bool premuto = false;
        std::int32_t x = 0, y = 0;
    };

    TBackendDialoghi& avanti;
    CDigit& digit;
    TInoltro inoltro;
    std::vector<TPuntoControllo> punti;
    TParametriGriglia griglia;
    bool grigliaLetta = false;
    bool terraAttesa = false;
    double est = 0, nord = 0;
    int persi = 0;
};

#endif
