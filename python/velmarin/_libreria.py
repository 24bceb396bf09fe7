"""The library itself: where it is found, and the C interface's prototypes.

The library is the file named by the environment variable VELMARIN_LIBRARY,
else the one next to this module, else the one the system's loader finds.
"""

import ctypes
import ctypes.util
import os
import sys

_NOMI_FILE = {"win32": ["velmarin.dll"], "darwin": ["libvelmarin.dylib"]}.get(
    sys.platform, ["libvelmarin.so", "libvelmarin.so.1"])


class TDataDigit(ctypes.Structure):
    """Which tablet is attached and how: the library's own record."""

    _fields_ = [
        ("tipo", ctypes.c_int16),
        ("porta", ctypes.c_int16),
        ("velocita", ctypes.c_int16),
        ("_parita", ctypes.c_int16),  # read and set as `parita`
        ("bitDati", ctypes.c_int16),
        ("bitStop", ctypes.c_int16),
        ("reset", ctypes.c_int16),
        ("risoluzione", ctypes.c_int16),
        ("numBottoni", ctypes.c_int16),
        ("funzBott", ctypes.c_uint8 * 16),
        ("limitiDefiniti", ctypes.c_bool),
        ("xMin", ctypes.c_int32),
        ("yMin", ctypes.c_int32),
        ("xMax", ctypes.c_int32),
        ("yMax", ctypes.c_int32),
    ]


    @property
    def parita(self):
        """The parity as the record is given it: 'N', 'E' or 'O' (another code
        as its number)."""
        codice = self._parita
        return chr(codice) if codice in (78, 69, 79) else codice

    @parita.setter
    def parita(self, valore):
        self._parita = ord(valore) if isinstance(valore, str) and len(valore) == 1 else valore


assert ctypes.sizeof(TDataDigit) == 52, "TDataDigit keeps its exported layout"

class SommarioAdattamento(ctypes.Structure):
    """velmarin_fit_summary."""

    _fields_ = [
        ("kind", ctypes.c_int),
        ("points", ctypes.c_int),
        ("rms", ctypes.c_double),
        ("std_dev", ctypes.c_double),
        ("worst", ctypes.c_int * 2),
        ("predicted_worst", ctypes.c_double),
        ("warnings", ctypes.c_uint),
    ]


class ResiduoPunto(ctypes.Structure):
    """velmarin_point_residual."""

    _fields_ = [
        ("x", ctypes.c_int32),
        ("y", ctypes.c_int32),
        ("east", ctypes.c_double),
        ("north", ctypes.c_double),
        ("residual_east", ctypes.c_double),
        ("residual_north", ctypes.c_double),
        ("loo_east", ctypes.c_double),
        ("loo_north", ctypes.c_double),
    ]


class InfoPorta(ctypes.Structure):
    """velmarin_port_info."""

    _fields_ = [
        ("port", ctypes.c_int),
        ("device", ctypes.c_char * 256),
        ("description", ctypes.c_char * 128),
        ("busy", ctypes.c_int),
        ("holder", ctypes.c_char * 64),
    ]


class Elemento(ctypes.Structure):
    """velmarin_feature."""

    _fields_ = [
        ("kind", ctypes.c_int),
        ("function", ctypes.c_int),
        ("button", ctypes.c_int),
        ("x", ctypes.c_int32),
        ("y", ctypes.c_int32),
        ("vertex_count", ctypes.c_int),
        ("vertices", ctypes.POINTER(ctypes.c_double)),
    ]


ELEMENTO = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.POINTER(Elemento))
PUCK = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_double, ctypes.c_double)
FINE = ctypes.CFUNCTYPE(None, ctypes.c_void_p)


class RichiamiSessione(ctypes.Structure):
    """velmarin_session_callbacks."""

    _fields_ = [
        ("feature_started", ELEMENTO),
        ("vertex_added", ELEMENTO),
        ("vertex_removed", ELEMENTO),
        ("feature_finished", ELEMENTO),
        ("puck_moved", PUCK),
        ("session_ended", FINE),
    ]


MOSSA = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_int32, ctypes.c_int32)
BOTTONE = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_int32, ctypes.c_int32, ctypes.c_int32)

_i, _d, _p = ctypes.c_int, ctypes.c_double, ctypes.c_void_p
_pi32, _pd = ctypes.POINTER(ctypes.c_int32), ctypes.POINTER(ctypes.c_double)
_pdati = ctypes.POINTER(TDataDigit)

# name: (result, arguments)
_PROTOTIPI = {
    "velmarin_open": (_p, [_pdati]),
    "velmarin_close": (None, [_p]),
    "velmarin_model_setup": (_i, [_i, _pdati]),
    "velmarin_map_port": (_i, [_i, ctypes.c_char_p]),
    "velmarin_check_port": (_i, [_i]),
    "velmarin_get_setup": (None, [_p, _pdati]),
    "velmarin_set_setup": (None, [_p, _pdati]),
    "velmarin_connect": (_i, [_p]),
    "velmarin_init": (_i, [_p]),
    "velmarin_send_init": (None, [_p]),
    "velmarin_send_reset": (None, [_p]),
    "velmarin_listen": (_i, [_p, MOSSA, BOTTONE, _p]),
    "velmarin_stop": (None, [_p]),
    "velmarin_line_state": (_i, [_p]),
    "velmarin_button_function": (_i, [_p, _i]),
    "velmarin_is_calibrated": (_i, [_p]),
    "velmarin_forget_calibration": (None, [_p]),
    "velmarin_to_ground": (_i, [_p, ctypes.c_int32, ctypes.c_int32, _pd, _pd]),
    "velmarin_calibrated_area": (_i, [_p, _i, _pd, _pd, _pd, _pd]),
    "velmarin_configure": (_i, [_p, _pdati]),
    "velmarin_calibrate_points": (_i, [_p]),
    "velmarin_calibrate_grid": (_i, [_p]),
    "velmarin_fit_points": (_i, [_p, _i, _pi32, _pi32, _pd, _pd]),
    "velmarin_fit_grid": (_i, [_p, _i, _i, _d, _d, _d, _d, _pi32, _pi32]),
    "velmarin_model_name": (ctypes.c_char_p, [_i]),
    "velmarin_function_name": (ctypes.c_char_p, [_i]),
    "velmarin_version": (ctypes.c_char_p, []),
    "velmarin_last_error": (ctypes.c_char_p, []),
    "velmarin_digitize": (_p, [_p, ctypes.POINTER(RichiamiSessione), _p]),
    "velmarin_session_set": (_i, [_p, _d, _d]),
    "velmarin_session_undo": (_i, [_p]),
    "velmarin_session_end": (None, [_p]),
    "velmarin_list_ports": (_i, [ctypes.POINTER(InfoPorta), _i]),
    "velmarin_fit_report": (_i, [_p, ctypes.POINTER(SommarioAdattamento), ctypes.POINTER(ResiduoPunto), _i]),
}


def _percorsi():
    scelto = os.environ.get("VELMARIN_LIBRARY")
    if scelto:
        return [scelto]
    qui = os.path.dirname(os.path.abspath(__file__))
    vicini = [os.path.join(qui, nome) for nome in _NOMI_FILE]
    sistema = ctypes.util.find_library("velmarin")
    return [p for p in vicini if os.path.exists(p)] + ([sistema] if sistema else []) + _NOMI_FILE


def _carica():
    tentativi = []
    for percorso in _percorsi():
        try:
            lib = ctypes.CDLL(percorso, use_errno=True, use_last_error=sys.platform == "win32")
        except OSError as errore:
            tentativi.append("%s (%s)" % (percorso, errore))
            continue
        for nome, (risultato, argomenti) in _PROTOTIPI.items():
            funzione = getattr(lib, nome)
            funzione.restype = risultato
            funzione.argtypes = argomenti
        return lib
    raise ImportError("velmarin: the library cannot be loaded; set VELMARIN_LIBRARY to its file. Tried: "
                      + "; ".join(tentativi))


lib = _carica()
