"""What the plugin's headless tests stand on besides banco.py: QGIS started
offscreen, and an interface with a real main window and map canvas."""

from qgis.core import QgsCoordinateReferenceSystem
from qgis.gui import QgsGui, QgsMapCanvas
from qgis.PyQt.QtCore import QCoreApplication, QEvent
from qgis.PyQt.QtWidgets import QMainWindow
from qgis.testing import start_app


APP = start_app()
QgsGui.editorWidgetRegistry().initEditors()  # QGIS's own start does it: the attribute forms' editors


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
