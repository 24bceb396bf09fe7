// The C interface: a CDigit behind a handle, with a notification target that
// passes moves and presses to the host's C functions. Each call is the C++
// call of the same name, with the library's own result.
//
// Choices of this interface:
// - No exception reaches a host's frames: where the library could only fail
//   for want of memory, that becomes the call's failure result.
// - velmarin_connect sends nothing after a refused open: nothing would reach
//   a tablet, and the model's waits would only hold the host up.
// - velmarin_close of a tablet that listens on a connection it did not open
//   stops listening first, so that its functions are never called after it.
//   On its own connection the destructor ends the reader first, as in C++.
#include "velmarin.h"

#include <array>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "calibration/calibrazione_esterna.h"
#include "dialogs/dialogo_funzioni_bottoni.h"
#include "digit.h"
#include "link/elenco_porte.h"
#include "link/iodev.h"
#include "link/ultimo_errore.h"
#include "tablet/catalogo.h"
#include "tablet/modulo.h"

struct velmarin_tablet final : CDigitNtfy {
    explicit velmarin_tablet(const TDataDigit& dati) : digit(dati) {}

    // On the reader thread, one at a time; listen and stop change the
    // functions only while delivery is held.
    void NotifyMove(std::int32_t x, std::int32_t y) override
    {
        if (mossa) mossa(utente, x, y);
    }
    void NotifyButton(std::int32_t b, std::int32_t x, std::int32_t y) override
    {
        if (bottone) bottone(utente, b, x, y);
    }
    bool Ascolta() const { return digit.GetCommNotification() == this; }

    CDigit digit;
    velmarin_move_fn mossa = nullptr;
    velmarin_button_fn bottone = nullptr;
    void* utente = nullptr;
    std::intptr_t connessione = 0;  // the port as this tablet's last Init opened it
    // Listening was asked for and not stopped: an Init clears the link's
    // target, and the connection it opens is heard all the same.
    std::atomic<bool> ascoltoChiesto{false};
};

namespace {

template <class F, class R>
R SenzaEccezioni(F&& f, R fallimento) noexcept
{
    try {
        return f();
    } catch (...) {  // nothing but want of memory throws below
        RegistraErrore("out of memory");
        return fallimento;
    }
}

std::string SenzaSpazi(std::string s)
{
    s.erase(s.find_last_not_of(' ') + 1);
    s.erase(0, s.find_first_not_of(' '));
    return s;
}

// The catalogue pads its names with blanks for the selection list, and the
// string table its labels for the button dialog.
const std::array<std::string, numTipiDigit>& NomiModelli()
{
    static const auto nomi = [] {
        std::array<std::string, numTipiDigit> n;
        for (int t = 0; t < numTipiDigit; ++t) n[static_cast<std::size_t>(t)] = SenzaSpazi(catalogoDigit[t].nome);
        return n;
    }();
    return nomi;
}

constexpr int codiciFunzione = funzAnnulla + 1;

const std::array<std::string, codiciFunzione>& NomiFunzioni()
{
    static const auto nomi = [] {
        std::array<std::string, codiciFunzione> n;
        for (int c = 0; c < codiciFunzione; ++c)
            if (const unsigned ids = IdsEtichettaFunzione(c)) n[static_cast<std::size_t>(c)] = SenzaSpazi(LoadResString(ids));
        return n;
    }();
    return nomi;
}

int Esito(bool b) { return b ? 1 : 0; }

// Records why `funzione` refused its arguments or could not serve; 0, the
// failure result.
int Rifiuta(const char* funzione, const char* perche) noexcept
{
    char testo[256];
    std::snprintf(testo, sizeof testo, "%s: %s", funzione, perche);
    RegistraErrore(testo);
    return 0;
}

int RifiutaNumero(const char* funzione, const char* perche, long numero) noexcept
{
    char testo[128];
    std::snprintf(testo, sizeof testo, perche, numero);
    return Rifiuta(funzione, testo);
}

// 1 for a tablet, 0 with the refusal recorded for a null one.
int Tavoletta(const velmarin_tablet* t, const char* funzione) noexcept
{
    return t ? 1 : Rifiuta(funzione, "the tablet is null");
}

// A failure of the library below, whose reason it recorded: the thread's
// errno or last error is put back as the failure left it.
int Fallito() noexcept
{
    RipristinaCodiceSistema();
    return 0;
}

}  // namespace

velmarin_tablet* velmarin_open(const TDataDigit* setup)
{
    return SenzaEccezioni([&] { return new velmarin_tablet(setup ? *setup : DatiPredefiniti()); },
                          static_cast<velmarin_tablet*>(nullptr));
}

void velmarin_close(velmarin_tablet* t)
{
    if (!t) return;
    const bool propria = t->connessione != 0 && IODevHandleAperto() == t->connessione;
    if (t->Ascolta() && !propria) t->digit.StopCommNotification();
    // On its own connection delivery must stay on for the reset to reach
    // the line; the host's functions go first, so that none of them runs
    // while the tablet is being closed.
    if (t->Ascolta() && propria && !IODevSulLettore()) velmarin_listen(t, nullptr, nullptr, nullptr);
    delete t;
}

int velmarin_model_setup(int model, TDataDigit* out)
{
    if (!out) return Rifiuta("velmarin_model_setup", "`out` is null");
    if (model < 1 || model >= numTipiDigit) return RifiutaNumero("velmarin_model_setup", "model %ld: the models are 1 to 8", model);
    TDataDigit d = DatiPredefiniti();
    ImpostaDaCatalogo(d, model);
    *out = d;
    return 1;
}

int velmarin_map_port(int port, const char* device)
{
    if (IODevMapPort(port, device)) return 1;
    return RifiutaNumero("velmarin_map_port", "port %ld: the ports are 1 to 255", port);
}

int velmarin_check_port(int port)
{
    if (port < 1 || port > 255) return RifiutaNumero("velmarin_check_port", "port %ld: the ports are 1 to 255", port);
    return SenzaEccezioni([&] { return IODevVerificaPorta(port); }, 0) ? 1 : Fallito();
}

void velmarin_get_setup(const velmarin_tablet* t, TDataDigit* out)
{
    if (t && out) t->digit.GetDataDigit(*out);
}

void velmarin_set_setup(velmarin_tablet* t, const TDataDigit* setup)
{
    if (t && setup) t->digit.SetDataDigit(*setup);
}

int velmarin_init(velmarin_tablet* t)
{
    if (!Tavoletta(t, "velmarin_init")) return 0;
    return SenzaEccezioni([&] {
        if (!t->digit.Init(nullptr)) return Fallito();
        t->connessione = IODevHandleAperto();
        if (t->ascoltoChiesto) t->digit.SetCommNotificationTo(t);
        return 1;
    }, 0);
}

void velmarin_send_init(velmarin_tablet* t)
{
    if (t) t->digit.SendInitString();
}

int velmarin_connect(velmarin_tablet* t)
{
    if (velmarin_init(t) != 1) return 0;
    velmarin_send_init(t);
    return 1;
}

void velmarin_send_reset(velmarin_tablet* t)
{
    if (t) t->digit.SendResetSeScelto();
}

int velmarin_listen(velmarin_tablet* t, velmarin_move_fn on_move, velmarin_button_fn on_button, void* user)
{
    if (!Tavoletta(t, "velmarin_listen")) return 0;
    t->digit.StopCommNotification();  // whoever listened: no callback runs past here
    t->mossa = on_move;
    t->bottone = on_button;
    t->utente = user;
    t->ascoltoChiesto = true;
    if (t->digit.SetCommNotificationTo(t) != 0) return 1;
    return Rifiuta("velmarin_listen", "no port of this tablet is open; the functions hear a later connection");
}

void velmarin_stop(velmarin_tablet* t)
{
    if (!t) return;
    t->digit.StopCommNotification();
    t->ascoltoChiesto = false;
}

int velmarin_line_state(const velmarin_tablet* t)
{
    if (!t || t->connessione == 0 || IODevHandleAperto() != t->connessione) return VELMARIN_LINE_CLOSED;
    return IODevStatoLinea() == lineaPersa ? VELMARIN_LINE_LOST : VELMARIN_LINE_OPEN;
}

int velmarin_button_function(const velmarin_tablet* t, int button)
{
    return t ? t->digit.GetFunzButt(button) : 0;
}

int velmarin_is_calibrated(const velmarin_tablet* t) { return t && t->digit.IsCalibrato() ? 1 : 0; }

void velmarin_forget_calibration(velmarin_tablet* t)
{
    if (t) t->digit.SetToNotCalibrato();
}

int velmarin_to_ground(const velmarin_tablet* t, int32_t x, int32_t y, double* east, double* north)
{
    if (!Tavoletta(t, "velmarin_to_ground")) return 0;
    if (!east || !north) return Rifiuta("velmarin_to_ground", "`east` or `north` is null");
    // The map itself gives infinities where a cell's denominator is 0; a
    // host here gets a refusal instead.
    double e = 0, n = 0;
    if (!t->digit.CalcoloCoordTrasfCalibrFine(x, y, e, n)) return Rifiuta("velmarin_to_ground", "no calibration in force");
    if (!std::isfinite(e) || !std::isfinite(n)) return Rifiuta("velmarin_to_ground", "the map gives no finite value there");
    *east = e;
    *north = n;
    return 1;
}

int velmarin_calibrated_area(const velmarin_tablet* t, int whole, double* east1, double* north1,
                             double* east2, double* north2)
{
    if (!Tavoletta(t, "velmarin_calibrated_area")) return 0;
    if (!east1 || !north1 || !east2 || !north2) return Rifiuta("velmarin_calibrated_area", "a result pointer is null");
    if (whole ? t->digit.GetMaxAreaCalibrata(*east1, *north1, *east2, *north2)
              : t->digit.GetSoloAreaCalibrata(*east1, *north1, *east2, *north2))
        return 1;
    return Rifiuta("velmarin_calibrated_area", whole ? "no calibration or no limits" : "no grid calibration");
}

int velmarin_configure(velmarin_tablet* t, TDataDigit* setup)
{
    if (!Tavoletta(t, "velmarin_configure")) return 0;
    if (!setup) return Rifiuta("velmarin_configure", "`setup` is null");
    return SenzaEccezioni([&] { return configDigit(nullptr, &t->digit, *setup); }, 0);
}

int velmarin_calibrate_points(velmarin_tablet* t)
{
    if (!Tavoletta(t, "velmarin_calibrate_points")) return 0;
    return SenzaEccezioni([&] { return Esito(t->digit.CalibraPtSparsi(nullptr)); }, 0);
}

int velmarin_calibrate_grid(velmarin_tablet* t)
{
    if (!Tavoletta(t, "velmarin_calibrate_grid")) return 0;
    return SenzaEccezioni([&] { return Esito(t->digit.CalibraGriglia(nullptr)); }, 0);
}

int velmarin_fit_points(velmarin_tablet* t, int n, const int32_t* x, const int32_t* y, const double* east,
                        const double* north)
{
    if (!Tavoletta(t, "velmarin_fit_points")) return 0;
    return Esito(TCalibrazioneEsterna::PuntiSparsi(t->digit, n, x, y, east, north));
}

int velmarin_fit_grid(velmarin_tablet* t, int squares_east, int squares_north, double east0, double north0,
                      double step_east, double step_north, const int32_t* node_x, const int32_t* node_y)
{
    if (!Tavoletta(t, "velmarin_fit_grid")) return 0;
    const TGrigliaDigitalizzata g{squares_east, squares_north, east0, north0, step_east, step_north, node_x, node_y};
    return SenzaEccezioni([&] { return Esito(TCalibrazioneEsterna::Griglia(t->digit, g)); }, 0);
}

int velmarin_fit_report(const velmarin_tablet* t, velmarin_fit_summary* summary, velmarin_point_residual* points,
                        int max_points)
{
    if (!Tavoletta(t, "velmarin_fit_report")) return 0;
    const int n = RapportoCalibrazione(t->digit, summary, points, max_points);
    if (n == 0) Rifiuta("velmarin_fit_report", "no calibration in force, or its points are not known");
    return n;
}

int velmarin_list_ports(velmarin_port_info* out, int max)
{
    std::vector<TPortaElencata> porte;
    if (!SenzaEccezioni([&] { return porte = ElencoPorte(), true; }, false)) return 0;
    for (int k = 0; out && k < max && k < static_cast<int>(porte.size()); ++k) {
        const TPortaElencata& p = porte[static_cast<std::size_t>(k)];
        velmarin_port_info& i = out[k];
        i.port = p.porta;
        i.busy = p.occupata ? 1 : 0;
        std::snprintf(i.device, sizeof i.device, "%s", p.dispositivo.c_str());
        std::snprintf(i.description, sizeof i.description, "%s", p.descrizione.c_str());
        std::snprintf(i.holder, sizeof i.holder, "%s", p.occupante.c_str());
    }
    return static_cast<int>(porte.size());
}

const char* velmarin_model_name(int model)
{
    if (model < 1 || model >= numTipiDigit) return nullptr;
    return SenzaEccezioni([&] { return NomiModelli()[static_cast<std::size_t>(model)].c_str(); },
                          static_cast<const char*>(nullptr));
}

const char* velmarin_function_name(int code)
{
    if (code < 0 || code >= codiciFunzione || IdsEtichettaFunzione(code) == 0) return nullptr;
    return SenzaEccezioni([&] { return NomiFunzioni()[static_cast<std::size_t>(code)].c_str(); },
                          static_cast<const char*>(nullptr));
}

const char* velmarin_version(void) { return VELMARIN_VERSIONE; }

const char* velmarin_last_error(void) { return TestoUltimoErrore(); }
