"""The library's refusals as Python exceptions."""

import ctypes
import sys

from ._libreria import lib


class VelmarinError(Exception):
    """The library refused: a port that does not open, points that give no map."""


class PortError(VelmarinError, OSError):
    """A port that could not be opened or set up. The message names the port,
    its device and the system's reason; errno (on Windows winerror) holds the
    system's code."""


def motivo():
    """The library's reason for the call that just failed on this thread."""
    return lib.velmarin_last_error().decode(errors="replace")


def rifiuto():
    return VelmarinError(motivo())


def rifiuto_porta():
    # A code of 0: the system had no part in it (the port is another
    # tablet's, say).
    if sys.platform == "win32":
        return PortError(None, motivo(), None, ctypes.get_last_error() or None)
    return PortError(ctypes.get_errno() or None, motivo())
