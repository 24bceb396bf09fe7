"""Digitize: the library's session on the tablet, its features added to the
active editable layer. Ground coordinates (in the calibration's CRS) go to
the map's CRS, where QGIS's snapping applies to them as to a click, and then
to the layer's; every feature goes through the layer's edit buffer and, as
the layer's settings ask, its attribute form, so QGIS's undo undoes it. A
marker follows the puck, the open feature is drawn as a rubber band, and
the map pans when the puck leaves the view."""

from qgis.core import (QgsCoordinateTransform, QgsEditFormConfig, QgsPointXY, QgsProject, QgsSettings,
                       QgsVectorLayer, QgsVectorLayerUtils, QgsWkbTypes)
from qgis.gui import QgsAttributeDialog, QgsAttributeEditorContext, QgsRubberBand, QgsVertexMarker
from qgis.PyQt.QtCore import QObject, Qt, pyqtSignal
from qgis.PyQt.QtGui import QColor

from .geometria import Rifiuto, geometria
from .ponte import sul_principale


def strato_adatto(strato):
    """None when `strato` can be digitized into, else why not."""
    if not isinstance(strato, QgsVectorLayer) or not strato.isSpatial():
        return "Make a vector layer with geometries the active layer."
    if not strato.isEditable():
        return "Toggle editing on \u201c%s\u201d first." % strato.name()
    return None


class Digitalizzatore(QObject):
    rifiutato = pyqtSignal(str)   # a feature the layer could not take, and why
    terminato = pyqtSignal()      # the session is over

    def __init__(self, iface, tavoletta, ponte, crs, strato, passo, tolleranza):
        """VelmarinError, with nothing left behind, when the tablet refuses
        a session (no calibration, or a distance the session refuses)."""
        super().__init__()
        self.iface, self.canvas, self.ponte = iface, iface.mapCanvas(), ponte
        self.crs, self.strato = crs, strato
        self.sessione = tavoletta.digitize(
            on_feature=ponte.elemento.emit, on_move=ponte.puck.emit, on_change=ponte.cambio.emit,
            on_end=ponte.fine.emit, on_error=ponte.su_errore, free_distance=passo, closing_tolerance=tolleranza)
        self.marcatore = QgsVertexMarker(self.canvas)
        self.marcatore.setIconType(QgsVertexMarker.ICON_CROSS)
        self.marcatore.setColor(QColor(200, 30, 30))
        self.banda = QgsRubberBand(self.canvas, QgsWkbTypes.LineGeometry)
        self.banda.setColor(QColor(200, 30, 30, 180))
        self.banda.setWidth(2)
        self._collegamenti = ((ponte.elemento, self.su_elemento), (ponte.cambio, self.su_cambio),
                              (ponte.puck, self.su_puck), (ponte.fine, self.ferma))
        for segnale, slot in self._collegamenti:
            ponte.collega(segnale, slot)
        strato.willBeDeleted.connect(self.ferma)  # the layer removed from the project: nowhere to digitize

    def annulla_vertice(self):
        """Takes back the open feature's last vertex; False with none open."""
        return self.sessione is not None and self.sessione.undo()

    @sul_principale
    def ferma(self):
        if self.sessione is None:
            return
        self.sessione.end()
        self.sessione = None
        for segnale, slot in self._collegamenti:
            self.ponte.scollega(segnale, slot)
        try:
            self.strato.willBeDeleted.disconnect(self.ferma)
        except (RuntimeError, TypeError):  # ended by that signal: the layer is going, its signals with it
            pass
        for oggetto in (self.marcatore, self.banda):
            self.canvas.scene().removeItem(oggetto)
        # Out of the scene they are Python's: freed now, while QGIS stands.
        self.marcatore = self.banda = None
        self.terminato.emit()

    # Coordinates.
    def _sulla_mappa(self, est, nord):
        verso = QgsCoordinateTransform(self.crs, self.canvas.mapSettings().destinationCrs(), QgsProject.instance())
        return verso.transform(QgsPointXY(est, nord))

    def _nello_strato(self, punto_mappa):
        aggancio = self.canvas.snappingUtils().snapToMap(punto_mappa)
        if aggancio.isValid():
            punto_mappa = aggancio.point()
        verso = QgsCoordinateTransform(self.canvas.mapSettings().destinationCrs(), self.strato.crs(),
                                       QgsProject.instance())
        return verso.transform(punto_mappa)

    # The session's events, on the main thread.
    @sul_principale
    def su_puck(self, est, nord):
        p = self._sulla_mappa(est, nord)
        self.marcatore.setCenter(p)
        if not self.canvas.extent().contains(p):
            self.canvas.setCenter(p)
            self.canvas.refresh()

    @sul_principale
    def su_cambio(self, _evento, elemento):
        self.banda.reset(QgsWkbTypes.LineGeometry)
        for est, nord in elemento.vertices:
            self.banda.addPoint(self._sulla_mappa(est, nord), False)
        self.banda.updatePosition()
        self.banda.update()

    @sul_principale
    def su_elemento(self, elemento):
        self.banda.reset(QgsWkbTypes.LineGeometry)
        if self.sessione is None:
            return
        vertici = [self._nello_strato(self._sulla_mappa(e, n)) for e, n in elemento.vertices]
        try:
            g = geometria(elemento.kind, vertici, self.strato)
        except Rifiuto as rifiuto:
            self.rifiutato.emit(str(rifiuto))
            return
        self._aggiungi(QgsVectorLayerUtils.createFeature(self.strato, g, {}, self.strato.createExpressionContext()))

    def _aggiungi(self, elemento):
        s = self.strato
        if strato_adatto(s):
            self.rifiutato.emit(strato_adatto(s))
            return
        if self._con_modulo():
            contesto = QgsAttributeEditorContext()
            contesto.setMapCanvas(self.canvas)
            dialogo = QgsAttributeDialog(s, elemento, False, self.iface.mainWindow(), True, contesto)
            dialogo.setMode(QgsAttributeEditorContext.AddFeatureMode)
            dialogo.setAttribute(Qt.WA_DeleteOnClose)
            dialogo.show()  # its OK adds the feature, through the edit buffer
            return
        s.beginEditCommand("Tablet feature")
        if s.addFeature(elemento):
            s.endEditCommand()
        else:
            s.destroyEditCommand()
            self.rifiutato.emit("\u201c%s\u201d did not take the feature." % s.name())

    def _con_modulo(self):
        """As QGIS's own digitizing: the layer's choice, else the user's."""
        if not self.strato.fields().count():
            return False
        scelta = self.strato.editFormConfig().suppress()
        if scelta != QgsEditFormConfig.SuppressDefault:
            return scelta == QgsEditFormConfig.SuppressOff
        return not QgsSettings().value("qgis/digitizing/disable_enter_attribute_values_dialog", False, type=bool)
