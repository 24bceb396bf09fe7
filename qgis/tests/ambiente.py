"""What the plugin's tests stand on: QGIS started headless, an interface
with a real main window and map canvas, a simulated tablet on a
pseudo-terminal, and a wait on a condition that keeps Qt's events going."""

import os
import subprocess
import time

from qgis.core import QgsApplication, QgsCoordinateReferenceSystem
from qgis.gui import QgsMapCanvas
from qgis.PyQt.QtCore import QCoreApplication, QEvent
from qgis.PyQt.QtWidgets import QMainWindow
from qgis.testing import start_app

APP = start_app()
ATTESA = float(os.environ.get("VELMARIN_ATTESA", "15"))


def attendi(condizione, secondi=ATTESA):
    """Runs Qt's events until `condizione()` holds; AssertionError after `secondi`."""
    fine = time.monotonic() + secondi
    while not condizione():
        if time.monotonic() > fine:
            raise AssertionError("waited %g s in vain for %s" % (secondi, getattr(condizione, "__doc__", "")))
        QCoreApplication.processEvents()
        time.sleep(0.005)


def elimina_rimandati():
    QCoreApplication.sendPostedEvents(None, QEvent.DeferredDelete)


class BarraMessaggi:
    def __init__(self):
        self.messaggi = []

    def pushMessage(self, titolo, testo, livello=0, durata=0):
        self.messaggi.append(testo)


class InterfacciaFinta:
    """The calls the plugin makes of QGIS's interface, on real widgets."""

    def __init__(self, crs="EPSG:32632"):
        self.finestra = QMainWindow()
        self.canvas = QgsMapCanvas(self.finestra)
        self.canvas.resize(800, 600)
        self.canvas.setDestinationCrs(QgsCoordinateReferenceSystem(crs))
        self.finestra.setCentralWidget(self.canvas)
        self.aiuto = self.finestra.menuBar().addMenu("&Help")
        self.barra = BarraMessaggi()
        self.strato = None

    def mainWindow(self):
        return self.finestra

    def mapCanvas(self):
        return self.canvas

    def messageBar(self):
        return self.barra

    def addToolBar(self, nome):
        return self.finestra.addToolBar(nome)

    def firstRightStandardMenu(self):
        return self.aiuto

    def activeLayer(self):
        return self.strato


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
