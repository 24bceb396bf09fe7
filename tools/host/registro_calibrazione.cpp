#include "registro_calibrazione.h"

#include <cstdlib>

#include "dialogs/dialogo_digitalizza.h"
#include "dialogs/dialogo_griglia.h"
#include "dialogs/dialogo_punti_sparsi.h"
#include "platform/toldeko/finestra_dialogo.h"

namespace {

// The ids of the entry fields, as the dialogs' templates have them.
constexpr int idEst = 2000, idNord = 2001, idPrimoGriglia = 2040;

// The fields are read as the library reads them, so the values are the same.
double Reale(const TStatoDialogo& s, int id) { return std::atof(s.Testo(id).c_str()); }
int Intero(const TStatoDialogo& s, int id) { return std::atoi(s.Testo(id).c_str()); }

}  // namespace

void TRegistroCalibrazione::TInoltro::Davanti(CDigitNtfy* d)
{
    std::lock_guard<std::mutex> g(mutex);
    dialogo = d;
    premuto = false;
}

bool TRegistroCalibrazione::TInoltro::Confermato(std::int32_t& px, std::int32_t& py)
{
    std::lock_guard<std::mutex> g(mutex);
    px = x;
    py = y;
    return premuto;
}

void TRegistroCalibrazione::TInoltro::NotifyMove(std::int32_t px, std::int32_t py)
{
    CDigitNtfy* d;
    {
        std::lock_guard<std::mutex> g(mutex);
        d = dialogo;
    }
    if (d) d->NotifyMove(px, py);
}

void TRegistroCalibrazione::TInoltro::NotifyButton(std::int32_t button, std::int32_t px, std::int32_t py)
{
    CDigitNtfy* d;
    {
        std::lock_guard<std::mutex> g(mutex);
        d = dialogo;
        // Recorded before the dialog hears it: the press that confirms
        // ends the dialog, and its owner reads these after that.
        if (digit.GetFunzButt(button) == funzConferma) {
            premuto = true;
            x = px;
            y = py;
        }
    }
    if (d) d->NotifyButton(button, px, py);
}

TRegistroCalibrazione::TRegistroCalibrazione(TBackendDialoghi& a, CDigit& d) : avanti(a), digit(d), inoltro(d) {}

TRegistroCalibrazione::~TRegistroCalibrazione()
{
    if (digit.GetCommNotification() == &inoltro) digit.StopCommNotification();
}

void TRegistroCalibrazione::Aperto(TFinestraDialogo& f)
{
    // The digitizing dialog has made itself the target in its set-up; the
    // host's target takes its place and hands everything on to it.
    if (f.Modello().id == modelloDigitalizza) {
        CDigitNtfy* dialogo = digit.GetCommNotification();
        if (dialogo && dialogo != &inoltro) {
            inoltro.Davanti(dialogo);
            digit.SetCommNotificationTo(&inoltro);
        }
    }
    avanti.Aperto(f);
}

void TRegistroCalibrazione::Chiuso(TFinestraDialogo& f)
{
    avanti.Chiuso(f);
    const bool ok = f.ValoreFine() == 1;
    const unsigned modello = f.Modello().id;
    if (modello == modelloPuntiSparsi) {
        terraAttesa = ok;
        if (ok) {
            const TStatoDialogo s = f.Fotografia();
            est = Reale(s, idEst);
            nord = Reale(s, idNord);
        }
    } else if (modello == modelloGriglia && ok) {
        const TStatoDialogo s = f.Fotografia();
        griglia = {Intero(s, idPrimoGriglia), Intero(s, idPrimoGriglia + 1), Reale(s, idPrimoGriglia + 2),
                   Reale(s, idPrimoGriglia + 3), Reale(s, idPrimoGriglia + 4), Reale(s, idPrimoGriglia + 5)};
        grigliaLetta = true;
    } else if (modello == modelloDigitalizza) {
        std::int32_t x = 0, y = 0;
        const bool sentito = inoltro.Confermato(x, y);
        inoltro.Davanti(nullptr);
        if (ok && !sentito) ++persi;
        if (ok && sentito && grigliaLetta && griglia.numQuadNord > 0) {
            const int k = static_cast<int>(punti.size());
            const int i = k / (griglia.numQuadNord + 1), j = k % (griglia.numQuadNord + 1);
            punti.push_back({i * griglia.passoEst + griglia.iniEst, j * griglia.passoNord + griglia.iniNord, x, y});
        } else if (ok && sentito && terraAttesa) {
            punti.push_back({est, nord, x, y});
        }
        terraAttesa = false;
    }
}

std::chrono::milliseconds TRegistroCalibrazione::Inattivo(TFinestraDialogo& f) { return avanti.Inattivo(f); }

void TRegistroCalibrazione::Cambiato(TFinestraDialogo& f) { avanti.Cambiato(f); }

void TRegistroCalibrazione::Creato(TFinestraDialogo& f) { avanti.Creato(f); }

void TRegistroCalibrazione::Svegliato(TFinestraDialogo& f) { avanti.Svegliato(f); }
