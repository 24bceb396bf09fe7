"""What every test of the plugin plays on, headless or inside QGIS itself:
velmarin-sim, and a wait that keeps Qt's events going. Apart from
ambiente.py, since a test inside QGIS must not start an application."""

import inspect
import os
import subprocess
import time

from qgis.core import QgsEditFormConfig, QgsProject, QgsVectorLayer
from qgis.PyQt.QtCore import QCoreApplication
from velmarin_qgis import impostazioni
from velmarin_qgis.dialogo_impostazione import record_del_modello

PORTA = 7
# Buttons: 1 Confirm, 2 polyline point by point, 3 line point by point, 4 Cancel.
FUNZIONI = [1, 6, 4, 8] + [0] * 12
LIMITI = dict(limitiDefiniti=True, xMin=0, yMin=0, xMax=40000, yMax=40000)
MONTE_MARIO = "EPSG:3003"  # Gauss-Boaga, west zone: East 1500000 + ..., North 5000000 + ...
PUNTI = ((2000, 3000), (36000, 4000), (34000, 35000), (5000, 33000))  # control points, in counts


def terreno(x, y):
    """The sheet under the tablet: 0.05 ground units per count."""
    return 1500000 + 0.05 * x, 5000000 + 0.05 * y


def imposta_su(dispositivo, calibrata=False):
    """Stores the set-up of a model 5 on `dispositivo`, calibrated on the
    sheet if asked; returns it."""
    record = record_del_modello(5)
    record.update(funzBott=FUNZIONI, numBottoni=16, **LIMITI)
    imp = impostazioni.Impostazione(5, PORTA, dispositivo, record)
    if calibrata:
        imp.calibrazione = {"kind": "points", "crs": MONTE_MARIO, "points": [[x, y, *terreno(x, y)] for x, y in PUNTI]}
    impostazioni.scrivi(imp)
    return imp

ATTESA = float(os.environ.get("VELMARIN_ATTESA", "15"))


def attendi(condizione, secondi=ATTESA):
    """Runs Qt's events until `condizione()` holds; AssertionError after `secondi`."""
    fine = time.monotonic() + secondi
    while not condizione():
        if time.monotonic() > fine:
            raise AssertionError("waited %g s in vain for %s" % (secondi, _testo(condizione)))
        QCoreApplication.processEvents()
        time.sleep(0.005)


def in_modifica(strato):
    """`strato` in the project (which frees it), in editing, its attribute
    form never shown: digitizing adds features without a question."""
    modulo = strato.editFormConfig()
    modulo.setSuppress(QgsEditFormConfig.SuppressOn)
    strato.setEditFormConfig(modulo)
    QgsProject.instance().addMapLayer(strato)
    strato.startEditing()
    return strato


def strato_memoria(geometria, crs, nome):
    return in_modifica(QgsVectorLayer("%s?crs=%s&field=nome:string" % (geometria, crs), nome, "memory"))


def _testo(condizione):
    try:
        return inspect.getsource(condizione).strip()
    except (OSError, TypeError):
        return repr(condizione)


class Simulatore:
    """velmarin-sim for model 5, played line by line: "x y button" states,
    one every 20 ms."""

    def __init__(self):
        self.processo = subprocess.Popen([os.environ["VELMARIN_SIM"], "--model", "5", "--step", "20", "--file", "-"],
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.dispositivo = self.processo.stdout.readline().strip()

    def _stati(self, *righe):
        self.processo.stdin.write("".join("%d %d %d\n" % r for r in righe))
        self.processo.stdin.flush()

    def sposta(self, x, y):
        # Two states: a gather of the library may straddle two and show the second only.
        self._stati((x, y, 0), (x, y, 0))

    def premi(self, x, y, bottone):
        self.sposta(x, y)
        self._stati(*[(x, y, bottone)] * 3)
        self.sposta(x, y)

    def chiudi(self):
        self.processo.stdin.close()
        self.processo.kill()
        self.processo.wait()
        self.processo.stdout.close()
