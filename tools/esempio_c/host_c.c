/* A host in C99 on the library's C interface: it connects a tablet, hears
 * its moves and presses through its callbacks, turns each press into ground
 * coordinates, stops after the presses it was told to wait for, and closes.
 *
 * usage: host_c --model N [--port P] [--device PATH] [--presses K] [--seconds S]
 *               [--mode listen|digitize]
 *
 * The port is COMn (default 1), mapped to the device if one is given, else
 * the platform's own.
 * It prints "move X Y" and "button B X Y function NAME ground E N" per event,
 * then "stopped: M moves, P presses"; with --mode digitize, through the
 * library's digitizing session, "feature KIND, N vertices, first E N" per
 * feature, then "stopped: M moves, F features". Exit codes: 0 done, 1 the
 * port was refused or the presses did not come in time, 2 bad options, 3 the
 * interface refused the tablet or its map. */
#if !defined(_WIN32)
#define _POSIX_C_SOURCE 200809L
#endif

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "velmarin.h"

#if defined(_WIN32)
#include <windows.h>
typedef CRITICAL_SECTION blocco;
static void blocco_crea(blocco* b) { InitializeCriticalSection(b); }
static void blocco_prendi(blocco* b) { EnterCriticalSection(b); }
static void blocco_lascia(blocco* b) { LeaveCriticalSection(b); }
static void blocco_distruggi(blocco* b) { DeleteCriticalSection(b); }
static void pausa_breve(void) { Sleep(10); }
#else
#include <pthread.h>
#include <time.h>
typedef pthread_mutex_t blocco;
static void blocco_crea(blocco* b) { pthread_mutex_init(b, NULL); }
static void blocco_prendi(blocco* b) { pthread_mutex_lock(b); }
static void blocco_lascia(blocco* b) { pthread_mutex_unlock(b); }
static void blocco_distruggi(blocco* b) { pthread_mutex_destroy(b); }
static void pausa_breve(void)
{
    struct timespec t = {0, 10000000L};
    nanosleep(&t, NULL);
}
#endif

/* What the callbacks heard; they run on the library's reader thread. */
typedef struct {
    blocco b;
    velmarin_tablet* tavoletta;
    int mosse, pressioni;
} ascolto;

static void VELMARIN_CALL su_mossa(void* utente, int32_t x, int32_t y)
{
    ascolto* a = (ascolto*)utente;
    printf("move %ld %ld\n", (long)x, (long)y);
    fflush(stdout);
    blocco_prendi(&a->b);
    a->mosse++;
    blocco_lascia(&a->b);
}

static void VELMARIN_CALL su_bottone(void* utente, int32_t bottone, int32_t x, int32_t y)
{
    ascolto* a = (ascolto*)utente;
    const char* funzione = velmarin_function_name(velmarin_button_function(a->tavoletta, (int)bottone));
    double est = 0, nord = 0;
    if (!velmarin_to_ground(a->tavoletta, x, y, &est, &nord)) printf("no ground for a press\n");
    printf("button %ld %ld %ld function %s ground %.3f %.3f\n", (long)bottone, (long)x, (long)y,
           funzione ? funzione : "?", est, nord);
    fflush(stdout);
    blocco_prendi(&a->b);
    a->pressioni++;
    blocco_lascia(&a->b);
}

typedef struct {
    int modello, porta, pressioni, digitalizza;
    double secondi;
    const char* dispositivo;
} opzioni;

/* A digitizing session's finished feature; a press of a confirm button is a
 * point. */
static void VELMARIN_CALL su_elemento(void* utente, const velmarin_feature* f)
{
    static const char* const generi[] = {"?", "point", "line", "polyline", "polygon"};
    ascolto* a = (ascolto*)utente;
    printf("feature %s, %d vertices, first %.3f %.3f\n", generi[f->kind >= 1 && f->kind <= 4 ? f->kind : 0],
           f->vertex_count, f->vertices[0], f->vertices[1]);
    fflush(stdout);
    blocco_prendi(&a->b);
    a->pressioni++;
    blocco_lascia(&a->b);
}

static void VELMARIN_CALL su_puck(void* utente, double est, double nord)
{
    ascolto* a = (ascolto*)utente;
    (void)est;
    (void)nord;
    blocco_prendi(&a->b);
    a->mosse++;
    blocco_lascia(&a->b);
}

static int intero(const char* s, long minimo, long massimo, int* valore)
{
    char* fine = NULL;
    long v = strtol(s, &fine, 10);
    if (!*s || *fine || v < minimo || v > massimo) return 0;
    *valore = (int)v;
    return 1;
}

static int leggi_opzioni(int argc, char** argv, opzioni* o)
{
    int i;
    o->modello = 0;
    o->porta = 1;
    o->pressioni = 2;
    o->secondi = 20;
    o->dispositivo = NULL;
    o->digitalizza = 0;
    for (i = 1; i + 1 < argc; i += 2) {
        const char* a = argv[i];
        const char* v = argv[i + 1];
        if (strcmp(a, "--model") == 0) {
            if (!intero(v, 1, 8, &o->modello)) return 0;
        } else if (strcmp(a, "--port") == 0) {
            if (!intero(v, 1, 255, &o->porta)) return 0;
        } else if (strcmp(a, "--device") == 0) {
            o->dispositivo = v;
        } else if (strcmp(a, "--presses") == 0) {
            if (!intero(v, 1, 1000, &o->pressioni)) return 0;
        } else if (strcmp(a, "--seconds") == 0) {
            o->secondi = atof(v);
        } else if (strcmp(a, "--mode") == 0) {
            if (strcmp(v, "digitize") == 0) o->digitalizza = 1;
            else if (strcmp(v, "listen") != 0) return 0;
        } else {
            return 0;
        }
    }
    return i == argc && o->modello != 0 && o->secondi > 0;
}

/* Ground East = x / 10 + 500 and North = y / 10 + 200, from four points;
 * then the library's report of the fit. */
static int calibra(velmarin_tablet* t)
{
    const int32_t x[] = {0, 10000, 0, 10000}, y[] = {0, 0, 10000, 10000};
    const double est[] = {500, 1500, 500, 1500}, nord[] = {200, 200, 1200, 1200};
    velmarin_fit_summary s;
    if (!velmarin_fit_points(t, 4, x, y, est, nord) || velmarin_fit_report(t, &s, NULL, 0) != 4) return 0;
    printf("calibration: %d points, rms %.3f, standard deviation %.3f, warnings 0x%x\n", s.points, s.rms,
           s.std_dev, s.warnings);
    return 1;
}

/* The machine's port list's line for COM<porta>, if it has one. */
static void stampa_porta(int porta)
{
    velmarin_port_info porte[64];
    int n = velmarin_list_ports(porte, 64), i;
    for (i = 0; i < n && i < 64; ++i)
        if (porte[i].port == porta)
            printf("port: COM%d %s, %s%s%s\n", porta, porte[i].device, porte[i].description,
                   porte[i].busy ? ", held by " : "", porte[i].busy ? porte[i].holder : "");
}

/* Waits until the callbacks have heard the presses and a move. */
static int attendi(ascolto* a, const opzioni* o)
{
    long giri;
    for (giri = 0; giri < (long)(o->secondi * 100); ++giri) {
        int fatto;
        blocco_prendi(&a->b);
        fatto = a->pressioni >= o->pressioni && a->mosse > 0;
        blocco_lascia(&a->b);
        if (fatto) return 1;
        pausa_breve();
    }
    return 0;
}

/* Connects the tablet; 0, with the reason, when its port is refused. */
static int collega(velmarin_tablet* t, const opzioni* o)
{
    if (!velmarin_connect(t)) {
        fprintf(stderr, "host_c: COM%d refused: %s\n", o->porta, velmarin_last_error());
        return 0;
    }
    printf("connected\n");
    fflush(stdout);
    return 1;
}

/* Digitizes until the features came, ends the session. */
static int digitalizza_tavoletta(ascolto* a, const opzioni* o)
{
    const velmarin_session_callbacks c = {NULL, NULL, NULL, su_elemento, su_puck, NULL};
    velmarin_session* s;
    int esito = 0;
    s = velmarin_digitize(a->tavoletta, &c, a);
    if (!s) {
        fprintf(stderr, "host_c: no session: %s\n", velmarin_last_error());
        return 3;
    }
    if (!attendi(a, o)) {
        fprintf(stderr, "host_c: no %d features and a move within %g s\n", o->pressioni, o->secondi);
        esito = 1;
    }
    velmarin_session_end(s);
    printf("stopped: %d moves, %d features\n", a->mosse, a->pressioni);
    return esito;
}

/* Listens until the presses came, stops. */
static int ascolta_tavoletta(ascolto* a, const opzioni* o)
{
    int esito = 0;
    if (velmarin_listen(a->tavoletta, su_mossa, su_bottone, a) != 1) esito = 3;
    else if (!attendi(a, o)) {
        fprintf(stderr, "host_c: no %d presses and a move within %g s\n", o->pressioni, o->secondi);
        esito = 1;
    }
    velmarin_stop(a->tavoletta);
    /* No callback runs now, and none will: the counts are final. */
    printf("stopped: %d moves, %d presses\n", a->mosse, a->pressioni);
    return esito;
}

int main(int argc, char** argv)
{
    opzioni o;
    TDataDigit dati;
    ascolto a;
    int esito;

    if (!leggi_opzioni(argc, argv, &o)) {
        fprintf(stderr, "usage: host_c --model N [--port P] [--device PATH] [--presses K] [--seconds S]"
                        " [--mode listen|digitize]\n");
        return 2;
    }
    printf("velmarin %s, model %d %s on COM%d\n", velmarin_version(), o.modello, velmarin_model_name(o.modello),
           o.porta);
    if (o.dispositivo && *o.dispositivo && !velmarin_map_port(o.porta, o.dispositivo)) return 2;
    stampa_porta(o.porta);
    velmarin_model_setup(o.modello, &dati);
    dati.porta = (int16_t)o.porta;
    dati.reset = 1; /* a reset would only add its wait */
    if (o.digitalizza) { /* a session needs the tablet's limits */
        dati.limitiDefiniti = 1;
        dati.xMin = dati.yMin = 0;
        dati.xMax = dati.yMax = 10000;
    }

    blocco_crea(&a.b);
    a.mosse = a.pressioni = 0;
    a.tavoletta = velmarin_open(&dati);
    esito = !a.tavoletta || !calibra(a.tavoletta) ? 3
            : !collega(a.tavoletta, &o)         ? 1
            : o.digitalizza                     ? digitalizza_tavoletta(&a, &o)
                                                : ascolta_tavoletta(&a, &o);
    velmarin_close(a.tavoletta);
    blocco_distruggi(&a.b);
    return esito;
}
