/* velmarin: the C interface of the digitizing tablet library.
 *
 * The same objects as the C++ interface of digit.h, in plain C types, for a
 * host of any compiler or language: a program built with another compiler,
 * Delphi, C#, Python's ctypes. The C++ interface stays as it is; these
 * functions call it. The header compiles as C99 and as C++.
 *
 * Results are as the library gives them: 1 for success, 0 for failure. A
 * null tablet pointer is refused everywhere: 0, a null, or nothing done.
 *
 * Calling convention: every function here, and every callback a host hands
 * in, uses the plain C convention of the platform, __cdecl on 32-bit
 * Windows (VELMARIN_CALL). The names stand undecorated in velmarin.dll's
 * export table and in libvelmarin.so.
 *
 * Threads and the one tablet. The library serves one tablet at a time per
 * process: every tablet object shares one connection and one listener, and
 * opening a tablet takes the listener away from another one that listens
 * (see digit.h). Callbacks run on the library's reader thread, one at a
 * time, directly as each report is decoded; velmarin_to_ground and
 * velmarin_button_function may be called from inside them. */
#ifndef VELMARIN_H
#define VELMARIN_H

#include <stdint.h>

#include "dati_digit.h"
#include "velmarin_api.h"

#if defined(_WIN32) && !defined(_WIN64)
#define VELMARIN_CALL __cdecl
#else
#define VELMARIN_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* A tablet: the library's CDigit behind a handle. */
typedef struct velmarin_tablet velmarin_tablet;

/* A new tablet with the record `setup` (copied), or with the library's
 * defaults (no model, COM2, buttons 1 to 4 confirm, line, line, cancel) for
 * a null setup. Null when no memory is left. Opening clears the shared link:
 * a tablet that listens stops hearing its reports. */
VELMARIN_API velmarin_tablet* VELMARIN_CALL velmarin_open(const TDataDigit* setup);
/* Ends the tablet's connection as the C++ destructor does, and frees it. The
 * reset, if chosen, reaches the line only while delivery is on, that is
 * while someone listens. A tablet that listens on a connection it did not
 * open stops listening first; one that listens on its own drops the host's
 * functions before the reset, so that no callback runs during the close.
 * When it returns no callback of this tablet
 * runs or will run, except the one it is called from: from inside one of
 * this tablet's callbacks it stops delivery at once, and the library's
 * reader ends and closes the port when that callback returns. */
VELMARIN_API void VELMARIN_CALL velmarin_close(velmarin_tablet* tablet);

/* The record of model `model` (1..8) with the catalogue's line settings,
 * reset and resolution, on COM2, with the default buttons and no limits: what
 * the selection dialog gives when the user picks the model. 0 and `out`
 * untouched for another model or a null `out`. */
VELMARIN_API int VELMARIN_CALL velmarin_model_setup(int model, TDataDigit* out);

/* Port COMn (1..255; the record's port is one byte, though the library's
 * dialogs offer COM1..COM4) opens `device` from now on, on every platform;
 * a null or empty device restores the platform's own: /dev/ttyS<n-1> on
 * Linux, COMn on Windows (\\.\COMn above 9). `device` is any name the
 * platform opens as a serial line: "/dev/ttyUSB0", a pseudo-terminal, or on
 * Windows "\\.\COM12" or another driver's device name. 1, or 0 for a port
 * outside 1..255. */
VELMARIN_API int VELMARIN_CALL velmarin_map_port(int port, const char* device);

/* Whether port COMn (1..255) can be had now as velmarin_connect would have
 * it: its device opened exclusively, a serial line (on Linux not the
 * pseudo-terminal multiplexer, a master side or a console), and closed again
 * at once. No tablet object is needed, and no dialog or box shows: a host
 * checks the user's port before it starts. 1; else 0, with the device and
 * the reason in velmarin_last_error and the system's code in errno (or
 * GetLastError). A port this process has connected counts as taken. */
VELMARIN_API int VELMARIN_CALL velmarin_check_port(int port);

/* Copies the tablet's record out, and a record in. A new record reaches the
 * line at the next velmarin_connect or velmarin_init. */
VELMARIN_API void VELMARIN_CALL velmarin_get_setup(const velmarin_tablet* tablet, TDataDigit* out);
VELMARIN_API void VELMARIN_CALL velmarin_set_setup(velmarin_tablet* tablet, const TDataDigit* setup);

/* Opens the port of the record and programs the tablet: velmarin_init, then
 * velmarin_send_init. 1 when the port is open; 0 when it could not be opened,
 * and then nothing is sent. A refused port also shows the library's message
 * box ("Porta Seriale"; on Linux written to standard error). */
VELMARIN_API int VELMARIN_CALL velmarin_connect(velmarin_tablet* tablet);
/* Opens the port alone (CDigit::Init); 1 when it is open. */
VELMARIN_API int VELMARIN_CALL velmarin_init(velmarin_tablet* tablet);
/* Sends the model's reset, if chosen, and its setting-up commands; the
 * model's waits hold the caller up to 3 s. */
VELMARIN_API void VELMARIN_CALL velmarin_send_init(velmarin_tablet* tablet);
/* Sends the model's reset if the record chooses it. */
VELMARIN_API void VELMARIN_CALL velmarin_send_reset(velmarin_tablet* tablet);

/* The pointer stands at a new position and no button is down. */
typedef void(VELMARIN_CALL* velmarin_move_fn)(void* user, int32_t x, int32_t y);
/* A button went down; button is 1 or more. */
typedef void(VELMARIN_CALL* velmarin_button_fn)(void* user, int32_t button, int32_t x, int32_t y);

/* Makes this tablet the listener: from now on every move goes to `on_move`
 * and every press to `on_button`, each with `user`. Either may be null, and
 * such events are dropped. A listener already set, this tablet's or
 * another's, is stopped first. 1 when a port is there to deliver (after
 * velmarin_init or velmarin_connect), 0 otherwise; the functions are held all
 * the same and hear the reports of a later velmarin_init or velmarin_connect
 * of this tablet, until velmarin_stop. */
VELMARIN_API int VELMARIN_CALL velmarin_listen(velmarin_tablet* tablet, velmarin_move_fn on_move,
                                               velmarin_button_fn on_button, void* user);
/* Holds delivery and drops the listener. Returns only when no callback is
 * running; from inside a callback it returns at once, and no further one
 * starts. */
VELMARIN_API void VELMARIN_CALL velmarin_stop(velmarin_tablet* tablet);

/* The state of the tablet's line: VELMARIN_LINE_CLOSED when this tablet has
 * no connection open (never connected, closed, or another tablet took the
 * port), VELMARIN_LINE_OPEN while its port works, VELMARIN_LINE_LOST once
 * the port has failed (a USB adapter pulled, the device gone). A lost line
 * stays lost until bytes come again; velmarin_connect opens it anew. */
#define VELMARIN_LINE_CLOSED 0
#define VELMARIN_LINE_OPEN 1
#define VELMARIN_LINE_LOST 2
VELMARIN_API int VELMARIN_CALL velmarin_line_state(const velmarin_tablet* tablet);

/* The function code of button `button` (from 1): 0 none, 1 confirm, 2 and
 * 4 line, 5 and 6 polyline, 8 cancel. 0 without a model, or for a button
 * beyond the record's count. */
VELMARIN_API int VELMARIN_CALL velmarin_button_function(const velmarin_tablet* tablet, int button);

/* 1 when a model is chosen, its limits defined and a calibration in force. */
VELMARIN_API int VELMARIN_CALL velmarin_is_calibrated(const velmarin_tablet* tablet);
/* Puts the tablet's calibration out of force (CDigit::SetToNotCalibrato):
 * for a host that tries fits on the tablet it listens to (a second tablet
 * object would silence it) and then gives them up. */
VELMARIN_API void VELMARIN_CALL velmarin_forget_calibration(velmarin_tablet* tablet);
/* The ground coordinates of tablet counts (x, y) by the calibration in
 * force; 1, or 0 with the results untouched when there is none or when the
 * map gives no finite value there (a grid cell's vanishing line). */
VELMARIN_API int VELMARIN_CALL velmarin_to_ground(const velmarin_tablet* tablet, int32_t x, int32_t y,
                                                  double* east, double* north);
/* The calibrated area: with `whole` not 0 the images of the record's two
 * limits (any calibration); with 0 the area of the grid with a margin of a
 * quarter interval (grid calibration only). 1, or 0 with the results
 * untouched. */
VELMARIN_API int VELMARIN_CALL velmarin_calibrated_area(const velmarin_tablet* tablet, int whole,
                                                        double* east1, double* north1, double* east2,
                                                        double* north2);

/* The library's dialogs, as the C++ calls run them, with no parent window.
 * velmarin_configure lets the user choose the tablet starting from `setup`
 * and writes the choice there on OK: it returns 1 for OK, 2 for cancel, 7
 * when the user refused to touch a calibrated tablet, 0 for a null argument.
 * The tablet takes the new record from velmarin_set_setup. The two
 * calibrations connect the tablet themselves and return 1 for a map in
 * force (or a kept one), 0 otherwise. */
VELMARIN_API int VELMARIN_CALL velmarin_configure(velmarin_tablet* tablet, TDataDigit* setup);
VELMARIN_API int VELMARIN_CALL velmarin_calibrate_points(velmarin_tablet* tablet);
VELMARIN_API int VELMARIN_CALL velmarin_calibrate_grid(velmarin_tablet* tablet);

/* Calibration without the library's dialogs, for hosts with their own.
 *
 * velmarin_fit_points: the least-squares affine map from `n` control points
 * (3 to 21), tablet counts x[k], y[k] and ground east[k], north[k], exactly
 * as the sparse-point calibration fits and stores it from the same points.
 * 0 and the map left as it was for a count outside 3..21, a null array, a
 * value that is not finite, a degenerate set (all points on one line), or
 * values so large that the fit overflows.
 *
 * velmarin_fit_grid: one projective map per cell of a grid of squares_east by
 * squares_north squares (1 to 21 each), exactly as the grid calibration
 * makes it. Node (p, q) lies at ground east0 + p*step_east, north0 +
 * q*step_north, and was digitized at node_x[k], node_y[k] with k = q *
 * (squares_east + 1) + p: East index varying fastest. 0 and the map left as
 * it was for a count outside 1..21, a null array, a value that is not
 * finite, a degenerate cell (corners on one line or on one point), or
 * values so large that a cell's fit overflows.
 *
 * Both replace the calibration in force only on success, and while the new
 * map is stored a concurrent velmarin_to_ground finds no calibration. */
VELMARIN_API int VELMARIN_CALL velmarin_fit_points(velmarin_tablet* tablet, int n, const int32_t* x,
                                                   const int32_t* y, const double* east,
                                                   const double* north);
VELMARIN_API int VELMARIN_CALL velmarin_fit_grid(velmarin_tablet* tablet, int squares_east,
                                                 int squares_north, double east0, double north0,
                                                 double step_east, double step_north,
                                                 const int32_t* node_x, const int32_t* node_y);

/* The report of the tablet's calibration in force, however it was made (the
 * library's dialogs or velmarin_fit_*): how well the control points (a
 * grid's nodes) fit one least-squares affine map. All in ground units.
 * - residual: the point's ground coordinates as given minus the affine map
 *   of all the points at its counts; leave-one-out: minus the map fitted
 *   without that point (NaN for three points, or where the others give no
 *   map);
 * - rms: sqrt(sum(dE^2 + dN^2) / n); std_dev, the standard deviation of unit
 *   weight: sqrt(sum(dE^2 + dN^2) / (2n - 6)), NaN for n = 3;
 * - worst: the 0-based indices of the two longest residuals;
 * - predicted_worst: the standard error of the fitted position at the worst
 *   corner of the limits (of the points' box without limits): std_dev *
 *   sqrt(2 h), h the fit's leverage there, 1/n + (p - m)' S^-1 (p - m) with
 *   m the points' mean and S their scatter in counts. NaN for three points
 *   and for a grid, whose map passes through every node (its residuals
 *   measure the sheet's departure from an affine map);
 * - warnings: VELMARIN_WARN_* bits, thresholds as named.
 * A grid's nodes come East index fastest. The sums are taken on data
 * centred on their means, so UTM-sized coordinates keep their digits. */
#define VELMARIN_FIT_SPARSE 1
#define VELMARIN_FIT_GRID 2
#define VELMARIN_WARN_CLUSTERED 0x01u  /* the points' box covers under 1/4 of the limits */
#define VELMARIN_WARN_COLLINEAR 0x02u  /* smaller spread of the counts under 1/10 of the larger */
#define VELMARIN_WARN_BLUNDER 0x04u    /* 5 points or more; a leave-one-out residual over 3 times the median */
#define VELMARIN_WARN_NO_REDUNDANCY 0x08u  /* three points: nothing checks them */
#define VELMARIN_WARN_NODE_OUT_OF_PLACE 0x10u  /* a grid node off its row and its column by 1/5 of a spacing */

typedef struct velmarin_fit_summary {
    int kind; /* VELMARIN_FIT_SPARSE or VELMARIN_FIT_GRID */
    int points;
    double rms;
    double std_dev;
    int worst[2];
    double predicted_worst;
    unsigned warnings;
} velmarin_fit_summary;

typedef struct velmarin_point_residual {
    int32_t x, y;
    double east, north;
    double residual_east, residual_north;
    double loo_east, loo_north;
} velmarin_point_residual;

/* Their layout, checked as TDataDigit's is (dati_digit.h): every field at a
 * multiple of its own size, as MSVC (/Zp8), Delphi ({$A8}) and .NET
 * (Sequential) place it on 32-bit and 64-bit Windows alike. The summary's
 * size is 48 there; only the Linux i386 ABI aligns a double to 4 and ends
 * it at 44. */
#if defined(__cplusplus)
#define VELMARIN_FORMA(condizione, nome) static_assert(condizione, "the C interface keeps its layout")
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define VELMARIN_FORMA(condizione, nome) _Static_assert(condizione, "the C interface keeps its layout")
#else
#define VELMARIN_FORMA(condizione, nome) typedef char nome[(condizione) ? 1 : -1]
#endif
#if defined(__i386__) && !defined(_WIN32)
VELMARIN_FORMA(sizeof(velmarin_fit_summary) == 44, velmarin_forma_sommario);
#else
VELMARIN_FORMA(sizeof(velmarin_fit_summary) == 48, velmarin_forma_sommario);
#endif
VELMARIN_FORMA(offsetof(velmarin_fit_summary, rms) == 8, velmarin_forma_rms);
VELMARIN_FORMA(offsetof(velmarin_fit_summary, worst) == 24, velmarin_forma_peggiori);
VELMARIN_FORMA(offsetof(velmarin_fit_summary, predicted_worst) == 32, velmarin_forma_previsto);
VELMARIN_FORMA(offsetof(velmarin_fit_summary, warnings) == 40, velmarin_forma_avvisi);
VELMARIN_FORMA(sizeof(velmarin_point_residual) == 56, velmarin_forma_residuo);
VELMARIN_FORMA(offsetof(velmarin_point_residual, east) == 8, velmarin_forma_est);
VELMARIN_FORMA(offsetof(velmarin_point_residual, loo_north) == 48, velmarin_forma_loo);
#undef VELMARIN_FORMA

/* Fills `summary` (if not null) and the first max_points entries of
 * `points` (if not null); returns the number of points, which may exceed
 * max_points, or 0 when the tablet has no calibration in force (summary and
 * points then untouched). */
VELMARIN_API int VELMARIN_CALL velmarin_fit_report(const velmarin_tablet* tablet, velmarin_fit_summary* summary,
                                                   velmarin_point_residual* points, int max_points);

/* The serial ports of the machine, for a host's own port choice. On Linux:
 * the adapters of /dev/serial/by-id (by their stable names), the ttyS
 * devices that are real UARTs, other ttyUSB and ttyACM devices; on Windows
 * every COM port the system lists, with its friendly name; on both every
 * port mapped with velmarin_map_port. `port` is the COMn number that opens
 * the device (mapped, or the platform's own), 0 where none does; `busy` is
 * 1 when another process holds the device, with its name and pid in
 * `holder` on Linux (Windows does not tell, and `holder` stays ""). Texts
 * are cut to their arrays and always end with a null. Fills the first `max`
 * entries of `out` (which may be null for max 0) and returns the count of
 * ports, which may exceed max; sorted by port number, ports without one
 * last. */
typedef struct velmarin_port_info {
    int port;
    char device[256];
    char description[128];
    int busy;
    char holder[64];
} velmarin_port_info;

VELMARIN_API int VELMARIN_CALL velmarin_list_ports(velmarin_port_info* out, int max);

/* Digitizing: the tablet's presses, by their buttons' functions, turned into
 * features in ground coordinates by the calibration in force.
 * - confirm (1) makes a point, or adds a vertex to the open line;
 * - line and polyline "Fine Ent." (4, 6) end the open feature and open a
 *   line or polyline at the press, one vertex per press after it; a line is
 *   one segment and ends at its second vertex;
 * - line and polyline "Dis. Lib." (2, 5) open one drawn freely: a vertex each
 *   time the puck has gone the free-drawing distance from the last;
 * - cancel (8) ends the open feature; with none open it ends the session
 *   (session_ended), which then hears nothing more;
 * - a polyline that ends with its last vertex within the closing tolerance
 *   of its first, and three vertices besides, ends as a polygon whose last
 *   vertex is the first; a line or polyline of one vertex is dropped.
 * The session is the tablet's listener (velmarin_listen) until it ends; its
 * callbacks run on the library's reader thread, one at a time, and the
 * feature they get, with its vertices, is valid only during the call. End a
 * session before its tablet is closed. */
#define VELMARIN_POINT 1
#define VELMARIN_LINE 2
#define VELMARIN_POLYLINE 3
#define VELMARIN_POLYGON 4

typedef struct velmarin_feature {
    int kind;       /* VELMARIN_POINT .. VELMARIN_POLYGON */
    int function;   /* of the button that opened it */
    int button;
    int32_t x, y;   /* counts of the press that opened it */
    int vertex_count;
    const double* vertices; /* east, north, east, north, ... */
} velmarin_feature;

typedef struct velmarin_session_callbacks {
    void(VELMARIN_CALL* feature_started)(void* user, const velmarin_feature* feature);
    void(VELMARIN_CALL* vertex_added)(void* user, const velmarin_feature* feature);
    /* undone; with no vertex left the feature is gone */
    void(VELMARIN_CALL* vertex_removed)(void* user, const velmarin_feature* feature);
    void(VELMARIN_CALL* feature_finished)(void* user, const velmarin_feature* feature);
    void(VELMARIN_CALL* puck_moved)(void* user, double east, double north);
    void(VELMARIN_CALL* session_ended)(void* user);
} velmarin_session_callbacks;

typedef struct velmarin_session velmarin_session;

/* Starts a session on a tablet with a model, its limits and a calibration
 * in force, whose connection is open (velmarin_connect). Any callback may be
 * null. Null, with the reason in velmarin_last_error, otherwise. */
VELMARIN_API velmarin_session* VELMARIN_CALL velmarin_digitize(velmarin_tablet* tablet,
                                                               const velmarin_session_callbacks* callbacks,
                                                               void* user);
/* The free-drawing distance (above 0) and the closing tolerance (0 or more,
 * 0 never closes), ground units; 1 and 0.5 until set. 0, and nothing
 * changed, for other values. */
VELMARIN_API int VELMARIN_CALL velmarin_session_set(velmarin_session* session, double free_distance,
                                                    double closing_tolerance);
/* Takes back the open feature's last vertex: 1, or 0 with none open. */
VELMARIN_API int VELMARIN_CALL velmarin_session_undo(velmarin_session* session);
/* Stops listening, ends the open feature (feature_finished) and the session
 * (session_ended, unless it had ended), and frees it. Not from inside the
 * session's own callbacks, where it is refused. */
VELMARIN_API void VELMARIN_CALL velmarin_session_end(velmarin_session* session);

/* Names, in static storage. The model's name without the padding of the
 * selection list ("Summa MicroGrid 3"), null outside 1..8. The label of a
 * button function code as the button dialog shows it ("Conferma"), null for
 * a code that names none. The library's version, "major.minor.patch". */
VELMARIN_API const char* VELMARIN_CALL velmarin_model_name(int model);
VELMARIN_API const char* VELMARIN_CALL velmarin_function_name(int code);
VELMARIN_API const char* VELMARIN_CALL velmarin_version(void);

/* Why the last call that failed on this thread failed, in English, for a
 * developer's log: the port and its device, the system's own reason, the
 * setting or the argument refused ("COM1 (/dev/ttyUSB0): cannot be opened:
 * Permission denied"). Each thread has its own; a call that succeeds leaves
 * it as it was, so read it only after a failure. The text stays valid until
 * the thread's next failing call. "" before any failure. The user's boxes
 * keep the library's Italian texts.
 *
 * After a refused open, and after the library's box, the thread's errno (on
 * Windows its GetLastError()) holds the system's code of the failure. */
VELMARIN_API const char* VELMARIN_CALL velmarin_last_error(void);

#ifdef __cplusplus
}
#endif

#endif
