"""The plugin's set-up, kept in QGIS's settings as one JSON record: which
tablet on which port, the tablet record's settings and button functions, the
digitizing distances, and the calibration in force with its CRS, so that the
next QGIS session finds the tablet as it was left. The library keeps nothing
on disk; the calibration is kept as the points or nodes it was fitted from
and fitted again when the tablet is made."""

import dataclasses
import json

from qgis.core import QgsCoordinateReferenceSystem, QgsSettings

CHIAVE = "velmarin/setup"

# The tablet record's fields the set-up dialog edits, by the library's names.
CAMPI_RECORD = ("velocita", "parita", "bitDati", "bitStop", "reset", "risoluzione", "numBottoni",
                "funzBott", "limitiDefiniti", "xMin", "yMin", "xMax", "yMax")


@dataclasses.dataclass
class Impostazione:
    modello: int = None        # 1..8; None until the user chooses
    porta: int = None          # COM number, 1..255
    dispositivo: str = ""      # the device mapped to the port; "" for the platform's own
    record: dict = dataclasses.field(default_factory=dict)  # CAMPI_RECORD by name
    passo_libero: float = 1.0  # ground units between stream-digitized vertices
    tolleranza: float = 0.5    # ground units that close a polyline into a polygon
    # {"kind": "points", "points": [[x, y, e, n], ...], "crs": ...} or
    # {"kind": "grid", "grid": [sq_e, sq_n, e0, n0, step_e, step_n], "nodes": [[x, y], ...], "crs": ...}
    calibrazione: dict = None


def leggi():
    """The stored set-up; a fresh one when none is stored or it cannot be read."""
    testo = QgsSettings().value(CHIAVE, "", type=str)
    try:
        valori = json.loads(testo) if testo else {}
        nomi = {f.name for f in dataclasses.fields(Impostazione)}
        return Impostazione(**{k: v for k, v in valori.items() if k in nomi})
    except (ValueError, TypeError):
        return Impostazione()


def scrivi(impostazione):
    QgsSettings().setValue(CHIAVE, json.dumps(dataclasses.asdict(impostazione)))


def nome_crs(crs):
    """A CRS as the set-up keeps it: the authority id, else the WKT."""
    return crs.authid() or crs.toWkt()


def crs_da(nome):
    return QgsCoordinateReferenceSystem(nome) if nome else QgsCoordinateReferenceSystem()
