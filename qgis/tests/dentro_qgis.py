"""Run by QGIS itself (qgis --code): the plugin from the source tree in the
real application. Checks that its toolbar is there, calibrates from four presses
on velmarin-sim with typed coordinates, digitizes a point, a line and a
polygon into layers of the project, saves screenshots of the calibration
dialog and of the main window into $VELMARIN_IMMAGINI, writes what it found
to $VELMARIN_ESITO as JSON, and ends QGIS."""

import json
import os
import sys
import traceback

SORGENTI = os.environ["VELMARIN_SORGENTI"]
sys.path[:0] = [os.path.join(SORGENTI, d) for d in ("python", "qgis", os.path.join("qgis", "tests"))]

from qgis.core import QgsCoordinateReferenceSystem, QgsProject, QgsRectangle  # noqa: E402
from qgis.PyQt.QtCore import QTimer  # noqa: E402
from qgis.PyQt.QtWidgets import QDialogButtonBox, QToolBar  # noqa: E402
from qgis.utils import iface  # noqa: E402

from banco import MONTE_MARIO, PUNTI, Simulatore, attendi, imposta_su, strato_memoria, terreno  # noqa: E402
from velmarin_qgis import classFactory  # noqa: E402
from velmarin_qgis.dialogo_impostazione import DialogoImpostazione  # noqa: E402


def digitalizza(plugin, sim, s, pressioni):
    iface.setActiveLayer(s)
    sessione = plugin.digitalizza()
    assert sessione is not None, iface.messageBar().currentItem().text()
    for x, y, bottone in pressioni:
        sim.premi(x, y, bottone)
    attendi(lambda: s.featureCount() == 1)
    plugin.ferma()


def immagine(widget, nome):
    widget.grab().save(os.path.join(os.environ["VELMARIN_IMMAGINI"], nome))


def prova(esito):
    sim = Simulatore()
    try:
        imposta_su(sim.dispositivo)
        QgsProject.instance().setCrs(QgsCoordinateReferenceSystem(MONTE_MARIO))
        plugin = classFactory(iface)
        plugin.initGui()
        finestra = iface.mainWindow()
        esito["toolbar"] = finestra.findChild(QToolBar, "velmarinTablet") is not None

        dialogo = plugin.punti()
        for k, (x, y) in enumerate(PUNTI):
            sim.premi(x, y, 1)
            attendi(lambda: len(dialogo.controllo.righe) == k + 1)
            e, n = terreno(x, y)
            dialogo.est.setText("%.3f" % (e + (0.04 if k == 2 else 0)))
            dialogo.nord.setText("%.3f" % n)
            dialogo.imposta.click()
        immagine(dialogo, "calibrazione_punti.png")
        esito["rms"] = dialogo.controllo.rapporto.rms
        dialogo.pulsanti.button(QDialogButtonBox.Ok).click()
        esito["calibrated"] = plugin.tavoletta.is_calibrated

        iface.mapCanvas().setExtent(QgsRectangle(*terreno(0, 0), *terreno(40000, 40000)))
        pozzi, fossi, lotti = (strato_memoria(g, MONTE_MARIO, n) for g, n in
                               (("Point", "wells"), ("LineString", "ditches"), ("Polygon", "plots")))
        digitalizza(plugin, sim, pozzi, [(20000, 20000, 1)])
        digitalizza(plugin, sim, fossi, [(4000, 8000, 2), (16000, 9000, 1), (26000, 15000, 1), (30000, 26000, 1),
                                         (30000, 26000, 4)])
        angoli = [(8000, 22000), (18000, 21000), (19000, 33000), (7000, 32000), (8000, 22000)]
        digitalizza(plugin, sim, lotti, [angoli[0] + (2,)] + [a + (1,) for a in angoli[1:]] + [(8000, 22000, 4)])
        esito["features"] = [s.featureCount() for s in (pozzi, fossi, lotti)]
        esito["kinds"] = [next(s.getFeatures()).geometry().wkbType() for s in (pozzi, fossi, lotti)]
        finestra.resize(1280, 800)
        canvas = iface.mapCanvas()
        canvas.setExtent(QgsRectangle(*terreno(0, 0), *terreno(40000, 40000)))
        disegnata = []
        canvas.mapCanvasRefreshed.connect(lambda: disegnata.append(True))
        canvas.refreshAllLayers()
        attendi(lambda: disegnata)
        immagine(finestra, "qgis_digitalizzazione.png")
        impostazione = DialogoImpostazione(plugin.impostazione, finestra)
        impostazione.show()
        immagine(impostazione, "impostazione.png")
        impostazione.reject()
        esito["status"] = plugin.stato.text()
        plugin.unload()
    finally:
        sim.chiudi()


def principale():
    esito = {}
    try:
        prova(esito)
    except Exception:  # everything goes to the report, and QGIS ends all the same
        esito["error"] = traceback.format_exc()
    with open(os.environ["VELMARIN_ESITO"] + ".tmp", "w") as f:
        json.dump(esito, f)
    os.rename(os.environ["VELMARIN_ESITO"] + ".tmp", os.environ["VELMARIN_ESITO"])
    os._exit(0)  # no "save the project?" question, no shutdown to wait for


QTimer.singleShot(500, principale)
