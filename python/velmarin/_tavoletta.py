"""A tablet: the library's tablet object, its connection and its listener."""

import ctypes
import math
import os
import threading
import weakref

from . import _rapporto, _sessione
from ._errori import VelmarinError, rifiuto, rifiuto_porta
from ._libreria import BOTTONE, MOSSA, TDataDigit, lib
from ._richiami import in_un_richiamo, protetto, richiamabili, su_errore_standard


_CAMPI = dict(TDataDigit._fields_)
_CAMPI["parita"] = _CAMPI.pop("_parita")


def _intero(nome, valore, minimo, massimo):
    if isinstance(valore, bool) or not isinstance(valore, int):
        raise TypeError("%s must be an integer, not %r" % (nome, valore))
    if not minimo <= valore <= massimo:
        raise ValueError("%s must be %d to %d, not %d" % (nome, minimo, massimo, valore))
    return valore


def map_port(port, device):
    """Port COM<port> (1..255) opens `device`; None restores the platform's own."""
    _intero("port", port, 1, 255)
    lib.velmarin_map_port(port, None if device is None else os.fsencode(device))


def check_port(port):
    """Checks that port COM<port> (1..255) can be had now, as connect would
    have it, and lets it go again; PortError (an OSError) with the device and
    the system's reason if it cannot."""
    _intero("port", port, 1, 255)
    if lib.velmarin_check_port(port) != 1:
        raise rifiuto_porta()


def model_name(model):
    """The model's name, as "Summa MicroGrid 3"; None outside 1..8."""
    nome = lib.velmarin_model_name(_intero("model", model, -2**31, 2**31 - 1))
    return nome.decode() if nome is not None else None


def function_name(code):
    """The label of a button function code, as "Conferma"; None for no function."""
    nome = lib.velmarin_function_name(_intero("code", code, -2**31, 2**31 - 1))
    return nome.decode("utf-8", "replace") if nome is not None else None


def model_settings(model):
    """The catalogue's settings of `model` (1..8), by the names Tablet takes
    them: what the library's selection dialog gives when the user picks it."""
    dati = TDataDigit()
    lib.velmarin_model_setup(_intero("model", model, 1, 8), ctypes.byref(dati))
    return {nome: (list(dati.funzBott) if nome == "funzBott" else getattr(dati, nome))
            for nome in _CAMPI if nome not in ("tipo", "porta")}


def version():
    """The library's version, "major.minor.patch"."""
    return lib.velmarin_version().decode()


def _imposta(dati, nome, valore):
    tipo = _CAMPI.get(nome)
    if tipo is None:
        raise TypeError("unknown tablet setting %r; the settings are %s" % (nome, ", ".join(_CAMPI)))
    if nome == "limitiDefiniti":
        dati.limitiDefiniti = bool(valore)
    elif nome == "funzBott":
        codici = [_intero("funzBott", c, 0, 255) for c in valore]
        if len(codici) > 16:
            raise ValueError("funzBott holds 16 codes, not %d" % len(codici))
        dati.funzBott[:] = codici + [0] * (16 - len(codici))
    else:
        if nome == "parita" and isinstance(valore, str) and len(valore) == 1:
            valore = ord(valore)  # "N", "E", "O"
        bit = 8 * ctypes.sizeof(tipo)
        setattr(dati, nome, _intero(nome, valore, -2**(bit - 1), 2**(bit - 1) - 1))


def _chiudi(maniglia, richiami, chiusa):
    # The tablet counts as closed only once the library has closed it: a
    # callback may run until the library drops the functions, and it still
    # finds its tablet whole.
    lib.velmarin_close(maniglia)
    chiusa.set()
    richiami.clear()  # only now may the collector free them


class Tablet:
    """A tablet of `model` (1..8) on COM<port>, with the catalogue's settings
    for the model; `settings` override fields of the library's record by
    name (velocita, parita, reset, risoluzione, numBottoni, funzBott,
    limitiDefiniti, xMin, yMin, xMax, yMax). With no model it has no model,
    as a record the user has not chosen yet.

    The library has one link: making a Tablet silences the connection of
    any other until that one connects again. Fit trials go on the tablet in
    use (forget_calibration gives them up), and model_settings gives a
    model's settings without a Tablet."""

    def __init__(self, model=None, port=None, **settings):
        dati = TDataDigit()
        if model is not None:
            lib.velmarin_model_setup(_intero("model", model, 1, 8), ctypes.byref(dati))
        self._maniglia = lib.velmarin_open(ctypes.byref(dati) if model is not None else None)
        if not self._maniglia:
            raise MemoryError("velmarin: no tablet could be made")
        self._richiami = []
        self._chiusa = threading.Event()
        self._fine = weakref.finalize(self, _chiudi, self._maniglia, self._richiami, self._chiusa)
        if port is not None:
            settings["porta"] = _intero("port", port, 1, 255)
        if settings:
            dati = self.setup
            try:
                for nome, valore in settings.items():
                    _imposta(dati, nome, valore)
            except (TypeError, ValueError):
                self.close()
                raise
            lib.velmarin_set_setup(self._maniglia, ctypes.byref(dati))

    # The object's life.
    def close(self):
        """Stops listening, sends the model's reset if the setup chooses it,
        ends the connection and frees the tablet. No callback runs during the
        close or after it. Not from inside a callback."""
        if in_un_richiamo():
            raise VelmarinError("a tablet is closed outside its callbacks")
        self._fine()

    def __enter__(self):
        return self

    def __exit__(self, *eccezione):
        self.close()

    def _h(self):
        if self._chiusa.is_set():
            raise VelmarinError("the tablet is closed")
        return self._maniglia

    @property
    def setup(self):
        """A copy of the tablet's record."""
        dati = TDataDigit()
        lib.velmarin_get_setup(self._h(), ctypes.byref(dati))
        return dati

    @property
    def port(self):
        """The COM port number of the setup."""
        return self.setup.porta

    # The connection.
    def connect(self):
        """Opens the port and programs the tablet; PortError (an OSError) with
        the device and the system's reason if the port is refused."""
        if lib.velmarin_connect(self._h()) != 1:
            raise rifiuto_porta()

    def send_reset(self):
        """Sends the model's reset, if the setup chooses it (reset other than 1)."""
        lib.velmarin_send_reset(self._h())

    def listen(self, on_move=None, on_button=None, on_error=None):
        """From now on on_move(x, y) hears every move and on_button(button, x,
        y) every press, on the library's reader thread. An exception they
        raise goes to on_error(exception), or to standard error, and the
        reader goes on. The callables are held until stop or close."""
        richiamabili(on_move=on_move, on_button=on_button, on_error=on_error)
        riporta = on_error or su_errore_standard
        mossa = MOSSA(protetto(on_move, "on_move", riporta)) if on_move else MOSSA()
        bottone = BOTTONE(protetto(on_button, "on_button", riporta)) if on_button else BOTTONE()
        esito = lib.velmarin_listen(self._h(), mossa, bottone, None)
        if in_un_richiamo():
            self._richiami.extend([mossa, bottone])  # the running one among the old
        else:
            self._richiami[:] = [mossa, bottone]  # the old ones run no more: listen stopped them
        return esito == 1

    def stop(self):
        """Stops listening; returns when no callback is running any more."""
        lib.velmarin_stop(self._h())
        if not in_un_richiamo():  # else the running one is among them
            self._richiami.clear()

    @property
    def line_state(self):
        """The state of the tablet's line: 'closed' (no connection of this
        tablet's), 'open' (its port works) or 'lost' (the port failed: an
        adapter pulled, the device gone). connect() opens a lost line anew."""
        return ("closed", "open", "lost")[lib.velmarin_line_state(self._h())]

    def button_function(self, button):
        """The function code of `button` (from 1): 0 none, 1 confirm, 2 and 4
        line, 5 and 6 polyline, 8 cancel; 0 without a model."""
        return lib.velmarin_button_function(self._h(), _intero("button", button, -2**31, 2**31 - 1))

    # Calibration and ground coordinates.
    @property
    def is_calibrated(self):
        """True with a model, its limits and a calibration in force."""
        return lib.velmarin_is_calibrated(self._h()) == 1

    def forget_calibration(self):
        """Puts the calibration out of force: a host that tried fits on this
        tablet, and gives them up."""
        lib.velmarin_forget_calibration(self._h())

    def to_ground(self, x, y):
        """(East, North) of tablet counts x, y; None without a calibration."""
        _intero("x", x, -2**31, 2**31 - 1)
        _intero("y", y, -2**31, 2**31 - 1)
        est, nord = ctypes.c_double(), ctypes.c_double()
        if lib.velmarin_to_ground(self._h(), x, y, ctypes.byref(est), ctypes.byref(nord)) != 1:
            return None
        return est.value, nord.value

    def calibrated_area(self, whole=True):
        """(east1, north1, east2, north2): with whole the images of the
        setup's limits, else the grid's area with a margin of a quarter
        interval; None when there is none."""
        valori = [ctypes.c_double() for _ in range(4)]
        if lib.velmarin_calibrated_area(self._h(), 1 if whole else 0, *map(ctypes.byref, valori)) != 1:
            return None
        return tuple(v.value for v in valori)

    def digitize(self, on_feature=None, on_move=None, on_change=None, on_end=None, on_error=None,
                 free_distance=1.0, closing_tolerance=0.5):
        """A digitizing session on this connected, calibrated tablet (with a
        model and its limits), as a context manager: its exit ends it.

        confirm makes a point or adds a vertex to the open line; the line
        and polyline functions open one, "Fine Ent." a vertex per press (a
        line ends at its second), "Dis. Lib." a vertex every free_distance
        ground units as the puck moves; cancel ends the open feature, and
        with none open the session (on_end). A polyline that ends within
        closing_tolerance of its first vertex, with three vertices besides,
        is a polygon. on_feature(Feature) hears each finished feature,
        on_move(east, north) the puck, on_change(event, Feature) the
        'started', 'vertex_added' and 'vertex_removed' events; all on the
        library's reader thread, their exceptions going to on_error as in
        listen. The session takes the tablet's listener."""
        richiamabili(on_feature=on_feature, on_move=on_move, on_change=on_change, on_end=on_end, on_error=on_error)
        s = _sessione.sessione(self._h(), on_feature, on_move, on_change, on_end, on_error)
        try:
            s.set(free_distance, closing_tolerance)
        except (TypeError, ValueError):
            s.end()
            raise
        return s

    def fit_report(self):
        """The report of the calibration in force, however it was made (the
        library's dialogs, fit_points or fit_grid): a FitReport, or None
        without a calibration."""
        return _rapporto.rapporto(self._h())

    def fit_points(self, points):
        """The affine map of 3 to 21 points (x, y, east, north), as the
        sparse-point calibration fits it; VelmarinError, with the map left as
        it was, when they lie on one line."""
        punti = [tuple(p) for p in points]
        if not 3 <= len(punti) <= 21:
            raise ValueError("fit_points takes 3 to 21 points (x, y, east, north), not %d" % len(punti))
        for numero, p in enumerate(punti):
            if len(p) != 4:
                raise ValueError("point %d must be (x, y, east, north), not %d values" % (numero, len(p)))
        x, y = _conteggi([p[0] for p in punti], "x"), _conteggi([p[1] for p in punti], "y")
        est, nord = _reali([p[2] for p in punti], "east"), _reali([p[3] for p in punti], "north")
        if lib.velmarin_fit_points(self._h(), len(punti), x, y, est, nord) != 1:
            raise rifiuto()

    def fit_grid(self, squares_east, squares_north, east0, north0, step_east, step_north, nodes):
        """One projective map per cell, as the grid calibration makes it.
        `nodes` are the (x, y) of the digitized nodes, East index varying
        fastest: node (p, q) lies at east0 + p * step_east, north0 + q *
        step_north. VelmarinError, with the map left as it was, for a cell
        whose corners lie on one line."""
        _intero("squares_east", squares_east, 1, 21)
        _intero("squares_north", squares_north, 1, 21)
        nodi = [tuple(n) for n in nodes]
        attesi = (squares_east + 1) * (squares_north + 1)
        if len(nodi) != attesi or any(len(n) != 2 for n in nodi):
            raise ValueError("a grid of %d by %d squares has %d nodes (x, y), not %d"
                             % (squares_east, squares_north, attesi, len(nodi)))
        terreno = _reali([east0, north0, step_east, step_north], "the grid's start and steps")
        x, y = _conteggi([n[0] for n in nodi], "x"), _conteggi([n[1] for n in nodi], "y")
        if lib.velmarin_fit_grid(self._h(), squares_east, squares_north, *terreno, x, y) != 1:
            raise rifiuto()


def _conteggi(valori, nome):
    return (ctypes.c_int32 * len(valori))(*[_intero(nome, v, -2**31, 2**31 - 1) for v in valori])


def _reali(valori, nome):
    reali = [float(v) for v in valori]
    if not all(math.isfinite(v) for v in reali):
        raise ValueError("%s must be finite numbers" % nome)
    return (ctypes.c_double * len(reali))(*reali)
