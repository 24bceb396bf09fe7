"""A digitizing session: the tablet's presses, by their buttons' functions,
turned into features in ground coordinates."""

import collections
import ctypes
import math

from ._errori import rifiuto
from ._libreria import ELEMENTO, FINE, PUCK, RichiamiSessione, lib
from ._richiami import in_un_richiamo, protetto, su_errore_standard

Feature = collections.namedtuple("Feature", "kind function button x y vertices")
Feature.__doc__ = """A feature: kind 'point', 'line', 'polyline' or 'polygon'; the
function code and the button of the press that opened it, and that press's
counts (x, y); its vertices as (east, north) pairs."""

_GENERI = {1: "point", 2: "line", 3: "polyline", 4: "polygon"}


def _elemento(f):
    e = f.contents
    v = e.vertices
    return Feature(_GENERI[e.kind], e.function, e.button, e.x, e.y,
                   [(v[2 * k], v[2 * k + 1]) for k in range(e.vertex_count)])


class Session:
    """A digitizing session, from Tablet.digitize; a context manager whose
    exit ends it. Its callbacks run on the library's reader thread."""

    def __init__(self, maniglia, richiami):
        self._richiami = richiami  # held while the library may call them
        self._sessione = lib.velmarin_digitize(maniglia, ctypes.byref(richiami), None)
        if not self._sessione:
            raise rifiuto()

    def set(self, free_distance=1.0, closing_tolerance=0.5):
        """The free-drawing distance (above 0) and the closing tolerance (0 or
        more, 0 never closes a polygon), in ground units."""
        for nome, v in (("free_distance", free_distance), ("closing_tolerance", closing_tolerance)):
            if isinstance(v, bool) or not isinstance(v, (int, float)) or not math.isfinite(v):
                raise TypeError("%s must be a finite number, not %r" % (nome, v))
        if self._sessione is None or lib.velmarin_session_set(self._sessione, free_distance, closing_tolerance) != 1:
            raise ValueError("free_distance must be above 0 and closing_tolerance 0 or more (or the session ended)")

    def undo(self):
        """Takes back the open feature's last vertex; False with none open."""
        return self._sessione is not None and lib.velmarin_session_undo(self._sessione) == 1

    def end(self):
        """Stops listening and ends the open feature and the session. Not
        from inside the session's callbacks: RuntimeError there, and the
        session goes on (the library refuses it, and a session forgotten
        while it still calls back would call freed functions)."""
        if in_un_richiamo():
            raise RuntimeError("Session.end() is refused inside the session's callbacks; end it from the host's thread")
        if self._sessione is not None:
            lib.velmarin_session_end(self._sessione)
            self._sessione = None

    def __enter__(self):
        return self

    def __exit__(self, *eccezione):
        self.end()


def sessione(maniglia, on_feature, on_move, on_change, on_end, on_error):
    """A session whose C callbacks wrap the host's functions."""
    riporta = on_error or su_errore_standard
    def evento(nome):
        return ELEMENTO(protetto(lambda f: on_change(nome, _elemento(f)), nome, riporta)) if on_change else ELEMENTO()
    richiami = RichiamiSessione(
        evento("started"), evento("vertex_added"), evento("vertex_removed"),
        ELEMENTO(protetto(lambda f: on_feature(_elemento(f)), "on_feature", riporta)) if on_feature else ELEMENTO(),
        PUCK(protetto(on_move, "on_move", riporta)) if on_move else PUCK(),
        FINE(protetto(on_end, "on_end", riporta)) if on_end else FINE())
    return Session(maniglia, richiami)
