// velmarin: the exported interface of the digitizing tablet library.
//
// A host builds a CDigit (with defaults or from a TDataDigit it stored), lets
// the user choose the tablet with configDigit, connects with Init,
// SendInitString and SetCommNotificationTo, and from then on hears every
// pointer move and button press through its CDigitNtfy, on the library's
// reader thread. Calibrations turn tablet counts into ground coordinates,
// East (Y) first and North (X) second.
//
// The original interface spoke of 32-bit `long` and 64-bit `long double`;
// here they are std::int32_t and double, whatever the platform.
#ifndef VELMARIN_DIGIT_H
#define VELMARIN_DIGIT_H

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "dati_digit.h"
#include "velmarin_api.h"

class GWnd;
struct TIndiceCelle;

// Releases the spatial index of a calibration grid, an internal of the
// library that the object owns.
struct VELMARIN_API TLiberaIndiceCelle {
    void operator()(TIndiceCelle* indice) const;
};

// ---------------------------------------------------------------------------
// Button function codes: what a press of a button means to the user. Only
// funzConferma and funzAnnulla act inside the library; 3 and 7 do not exist.
constexpr int funzNessuna = 0;
constexpr int funzConferma = 1;
constexpr int funzLineaDisLib = 2;
constexpr int funzLineaFineEnt = 4;
constexpr int funzPolilineaDisLib = 5;
constexpr int funzPolilineaFineEnt = 6;
constexpr int funzAnnulla = 8;

// Calibration states: which map turns counts into ground coordinates.
constexpr int calibNessuna = 1;
constexpr int calibGriglia = 2;
constexpr int calibPtSparsi = 4;

// Size of the calibration tables: at most 21 grid squares per axis.
// CalibraGriglia refuses a larger grid as the grid dialog refuses a bad entry,
// with a beep and the dialog again. Should a larger count reach the maps all
// the same, it is cut to its first maxQuadrati squares on that axis: only
// those are fitted, searched and counted in the calibrated area, and nothing
// is written outside the tables.
constexpr int maxQuadrati = 21;

// Result of configDigit when the user refused the "already calibrated" warning.
constexpr int risultatoNo = 7;

// TDataDigit, which tablet is attached and how, stands in dati_digit.h,
// where the C interface reads it too.

static_assert(sizeof(std::atomic<std::int32_t>) == sizeof(std::int32_t) &&
                  std::atomic<std::int32_t>::is_always_lock_free,
              "CDigit's calibration state keeps the width of a plain 32-bit field");

// ---------------------------------------------------------------------------
// The notification target. Both calls run on the library's reader thread,
// directly inside the decoding of the report that caused them.
class CDigitNtfy {
public:
    CDigitNtfy() = default;
    CDigitNtfy(const CDigitNtfy&) = default;
    CDigitNtfy& operator=(const CDigitNtfy&) { return *this; }

    // The pointer stands at a new position and no button is down.
    virtual void NotifyMove(std::int32_t x, std::int32_t y) = 0;
    // A button went down; button is 1 or more.
    virtual void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) = 0;

protected:
    // Not virtual, as in the original interface: a target is never deleted
    // through this base.
    ~CDigitNtfy() = default;
};

// ---------------------------------------------------------------------------
// The tablet object. One tablet is served at a time per process, however many
// CDigit objects exist: they share the link record and the port.
class VELMARIN_API CDigit {
public:
    CDigit();
    explicit CDigit(const TDataDigit& data);
    CDigit(const CDigit&) = delete;  // each object owns its own tables
    CDigit& operator=(const CDigit& other);
    ~CDigit();

    // Connection and notification.
    bool Init(GWnd* owner);
    int SetCommNotificationTo(CDigitNtfy* target);
    void StopCommNotification();
    CDigitNtfy* GetCommNotification() const;

    // Queries and settings.
    bool IsScelto() const;
    bool IsCalibrato() const;
    bool IsCalibratoGriglia() const;
    void SetToNotCalibrato();
    TDataDigit& GetDataDigit();
    void GetDataDigit(TDataDigit& data) const;
    void SetDataDigit(const TDataDigit& data);
    int GetFunzButt(int button) const;

    // Commands to the tablet.
    void SendInitString();
    void SendResetSeScelto();

    // Calibrations.
    bool CalibraPtSparsi(GWnd* parent);
    bool CalibraGriglia(GWnd* parent);

    // Transformation and calibrated area.
    bool TrasformaCoordDigit(double& est, double& nord, int& button);
    bool CalcoloCoordTrasfCalibrFine(int x, int y, double& est, double& nord) const;
    bool GetSoloAreaCalibrata(double& est1, double& nord1, double& est2, double& nord2) const;
    bool GetMaxAreaCalibrata(double& est1, double& nord1, double& est2, double& nord2) const;

private:
    friend class CDigitTestAccess;  // the test suite's one way in
    friend struct TCalibrazioneEsterna;  // calibration from points a host gives
    friend struct TCalibrazioneInVigore;  // the points behind the map, for its report

    void doConstruct();
    void Ritarda(std::int32_t ms) const;

    void SolGausJ(double** a, double* b, double* x, int n, bool& errore);
    void LeastSqareMatrix(double** a, const double* b, double* x, int m, int n, bool& errore);
    void Swap(double& a, double& b) const;

    void CalcoloTrasfCoord(const double* x, const double* y, const double* est, const double* nord,
                           double* coefEst, double* coefNord, int n, bool& errore);
    bool CalcoloCoefficientiPtSparsi(double* x, double* y, double* est, double* nord, int n);

    bool CalcoloCoefOmog(std::int32_t* x, std::int32_t* y, double* est, double* nord, double* coef);
    bool CalcoloCoefficientiOmog(std::int32_t*** angX, std::int32_t*** angY, double*** angEst,
                                 double*** angNord);

    void CalcoloTrasfOmog(std::int32_t x, std::int32_t y, double& est, double& nord,
                          const double* coef) const;
    int Ccw(std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1, std::int32_t x2,
            std::int32_t y2) const;
    bool PtInTri(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t x3,
                 std::int32_t y3, std::int32_t px, std::int32_t py) const;
    bool PtInRect(const std::int32_t* xs, const std::int32_t* ys, std::int32_t x, std::int32_t y) const;
    int CercaCellaIndicizzata(std::int32_t x, std::int32_t y) const;
    int CercaCellaScandita(std::int32_t x, std::int32_t y) const;
    void AggiornaIndiceCelle();

    bool ChiediGriglia(GWnd* parent);
    void MemorizzaNodo(int i, int j, std::int32_t x, std::int32_t y, double est, double nord,
                       double*** angEst, double*** angNord);
    void CopiaIndiceCelle(const CDigit& other);

    std::intptr_t hPorta;  // the port as Init last took it; 0 if never connected
    TDataDigit dati;
    std::int32_t numQuadEst;
    std::int32_t numQuadNord;
    double iniEst;
    double iniNord;
    double passoEst;
    double passoNord;
    // Written on the host's thread, read inside notifications on the reader
    // thread: a calibration writes its tables first and then publishes the
    // state with release, and the map reads the state with acquire before
    // the tables, so a new state never comes with old coefficients. The
    // atomic takes the place and the width of the plain 32-bit field.
    std::atomic<std::int32_t> statoCalibr;
    double*** coefCelle;        // [est][nord][8]
    std::int32_t*** angoliX;    // [est][nord][4]
    std::int32_t*** angoliY;    // [est][nord][4]
    // Index of the cells of the last grid fit, to find a point's cell
    // quickly; null until a grid is fitted.
    std::unique_ptr<TIndiceCelle, TLiberaIndiceCelle> indiceCelle;
};

// ---------------------------------------------------------------------------
// Dialogs. Each returns what the dialog ended with: 1 OK, 2 cancel.
VELMARIN_API int configDigit(GWnd* parent, CDigit* digit, TDataDigit& dati);
VELMARIN_API int dialogSelectPtiSparsi(GWnd* parent, double& est, double& nord);
VELMARIN_API int dialogCalibraGriglia(GWnd* parent, int& numQuadEst, int& numQuadNord, double& iniEst,
                         double& iniNord, double& passoEst, double& passoNord);
VELMARIN_API int dialogGetPnt(GWnd* parent, const char* titolo, CDigit* digit, double est, double nord, int& x,
                 int& y);

// ---------------------------------------------------------------------------
// Port names. COMn stays the port's name, and the host may map it to another
// device: `path` is then what the port opens instead of its own device. On
// Windows COMn opens "COMn", from COM10 on "\\.\COMn", and a mapped name
// is given to CreateFileA as it is (another COM number, "\\.\COM12", any
// device name). On POSIX COMn opens /dev/ttyS<n-1>, and a mapped path names
// any terminal device (a USB adapter, a /dev/serial/by-id link, a
// pseudo-terminal). A null or empty path restores the default. Returns 1 on
// success, 0 for a port number outside 1..255.
VELMARIN_API int IODevMapPort(int porta, const char* path);

// ---------------------------------------------------------------------------
// The report of the calibration in force on `digit`, however it was made:
// the figures of velmarin_fit_report (velmarin.h, which defines them), for a
// host of this interface. Fills the summary (if not null) and the first
// max_points points (if not null); returns the count of points, 0 without a
// calibration in force.
struct velmarin_fit_summary;
struct velmarin_point_residual;
VELMARIN_API int RapportoCalibrazione(const CDigit& digit, velmarin_fit_summary* summary,
                                      velmarin_point_residual* points, int max_points);

#endif
