"""Calibrate (points): a table of control points, each pressed on the tablet
and given its ground coordinates by typing them, by clicking it on the map,
or from a selected feature of a point layer; the residuals after each one."""

from qgis.core import QgsCoordinateTransform, QgsMapLayerProxyModel, QgsPointXY, QgsProject
from qgis.gui import QgsMapLayerComboBox, QgsMapToolEmitPoint, QgsProjectionSelectionWidget
from qgis.PyQt.QtGui import QDoubleValidator
from qgis.PyQt.QtWidgets import (QDialog, QDialogButtonBox, QGridLayout, QHBoxLayout, QLabel, QLineEdit,
                                 QPushButton, QVBoxLayout)

from .impostazioni import nome_crs
from .ponte import sul_principale
from .punti_controllo import PuntiControllo
from .rapporto import TabellaResidui, riassunto

CONFERMA = 1  # the function of the button that takes a point


class DialogoPunti(QDialog):
    """Non-modal, so that the map stays at hand. `funzione` gives a button's
    function code; `prova` is the tablet the fits are tried on."""

    def __init__(self, canvas, prova, funzione, crs, parent=None):
        super().__init__(parent)
        self.setWindowTitle(self.tr("Calibrate the tablet from control points"))
        self.canvas, self.funzione = canvas, funzione
        self.controllo = PuntiControllo(prova)
        self._strumento = self._strumento_prima = None

        self.sistema = QgsProjectionSelectionWidget()
        self.sistema.setCrs(crs)
        self.tabella = TabellaResidui()
        self.est, self.nord = QLineEdit(), QLineEdit()
        for campo, nome in ((self.est, "East"), (self.nord, "North")):
            campo.setValidator(QDoubleValidator())
            campo.setPlaceholderText(self.tr(nome))
        self.imposta = QPushButton(self.tr("Set"))
        # Enter in the coordinates sets the point; were OK the default, it
        # would end the calibration as soon as three points fit.
        self.imposta.setDefault(True)
        self.dalla_mappa = QPushButton(self.tr("Click on map"))
        self.dalla_mappa.setCheckable(True)
        self.strato = QgsMapLayerComboBox()
        self.strato.setFilters(QgsMapLayerProxyModel.PointLayer)
        self.dallo_strato = QPushButton(self.tr("Use selected feature"))
        self.rifai = QPushButton(self.tr("Redo press"))
        self.rimuovi = QPushButton(self.tr("Remove point"))
        self.sommario = QLabel()
        self.sommario.setWordWrap(True)
        self.pulsanti = QDialogButtonBox(QDialogButtonBox.Ok | QDialogButtonBox.Cancel)
        for pulsante in self.pulsanti.buttons():
            pulsante.setAutoDefault(False)

        self.imposta.clicked.connect(self.imposta_digitato)
        self.dalla_mappa.toggled.connect(self._scegli_sulla_mappa)
        self.dallo_strato.clicked.connect(self.imposta_da_strato)
        self.rifai.clicked.connect(lambda: self._su_riga(self.controllo.rifai))
        self.rimuovi.clicked.connect(lambda: self._su_riga(self.controllo.rimuovi))
        self.pulsanti.accepted.connect(self.accept)
        self.pulsanti.rejected.connect(self.reject)
        self.finished.connect(lambda _: self._scegli_sulla_mappa(False))
        self._disponi()
        self._aggiorna()

    def _disponi(self):
        griglia = QGridLayout()
        griglia.addWidget(QLabel(self.tr("Ground coordinates' CRS")), 0, 0)
        griglia.addWidget(self.sistema, 0, 1, 1, 4)
        griglia.addWidget(QLabel(self.tr("East, North")), 1, 0)
        for c, w in enumerate((self.est, self.nord, self.imposta, self.dalla_mappa), 1):
            griglia.addWidget(w, 1, c)
        griglia.addWidget(QLabel(self.tr("Point layer")), 2, 0)
        griglia.addWidget(self.strato, 2, 1, 1, 3)
        griglia.addWidget(self.dallo_strato, 2, 4)
        riga = QHBoxLayout()
        for w in (self.rifai, self.rimuovi):
            riga.addWidget(w)
        riga.addStretch()
        guida = QLabel(self.tr("Press a control point on the tablet with a Confirm button, then give its "
                               "ground coordinates: type them, click the point on the map, or use a "
                               "selected feature of a point layer. The residuals follow every point."))
        guida.setWordWrap(True)
        verticale = QVBoxLayout(self)
        for parte in (guida, self.tabella, griglia, riga, self.sommario, self.pulsanti):
            (verticale.addLayout if isinstance(parte, (QGridLayout, QHBoxLayout)) else verticale.addWidget)(parte)

    # What the dialog gives.
    def crs(self):
        return self.sistema.crs()

    def calibrazione(self):
        """The calibration as the set-up keeps it; None before a fit."""
        if self.controllo.rapporto is None:
            return None
        return {"kind": "points", "points": [list(p) for p in self.controllo.punti()], "crs": nome_crs(self.crs())}

    # The tablet.
    @sul_principale
    def su_pressione(self, bottone, x, y):
        if self.funzione(bottone) != CONFERMA:
            return
        riga = self.controllo.pressione(x, y)
        if riga is not None:
            self._aggiorna(riga)

    # Ground coordinates.
    def imposta_digitato(self):
        try:
            est, nord = float(self.est.text().replace(",", ".")), float(self.nord.text().replace(",", "."))
        except ValueError:
            return
        self._terreno(est, nord)

    def imposta_da_strato(self):
        strato = self.strato.currentLayer()
        scelti = list(strato.getSelectedFeatures()) if strato else []
        if len(scelti) != 1 or scelti[0].geometry().isEmpty():
            self.sommario.setText(self.tr("Select one feature of the point layer first."))
            return
        punto = next(scelti[0].geometry().vertices())
        self._terreno_da(QgsPointXY(punto.x(), punto.y()), strato.crs())

    def _scegli_sulla_mappa(self, acceso):
        if acceso and self._strumento is None:
            self._strumento_prima = self.canvas.mapTool()
            self._strumento = QgsMapToolEmitPoint(self.canvas)
            self._strumento.canvasClicked.connect(lambda p, _: self._terreno_da(p, self._crs_mappa()))
            self.canvas.setMapTool(self._strumento)
        elif not acceso and self._strumento is not None:
            self.canvas.unsetMapTool(self._strumento)
            if self._strumento_prima is not None:
                self.canvas.setMapTool(self._strumento_prima)
            self._strumento = None
            self.dalla_mappa.setChecked(False)

    def _crs_mappa(self):
        return self.canvas.mapSettings().destinationCrs()

    def _terreno_da(self, punto, crs):
        punto = QgsCoordinateTransform(crs, self.crs(), QgsProject.instance()).transform(punto)
        self._terreno(punto.x(), punto.y())

    def _terreno(self, est, nord):
        riga = self._riga_scelta()
        if riga is None:
            self.sommario.setText(self.tr("Press the point on the tablet first."))
            return
        self.controllo.terreno(riga, est, nord)
        self._aggiorna(riga)

    # The table.
    def _riga_scelta(self):
        righe = self.tabella.selectionModel().selectedRows()
        return righe[0].row() if righe else None

    def _su_riga(self, azione):
        riga = self._riga_scelta()
        if riga is not None:
            azione(riga)
            self._aggiorna(min(riga, len(self.controllo.righe) - 1))

    def _aggiorna(self, riga=None):
        c = self.controllo
        self.tabella.mostra(c.righe, c.rapporto, c.usate)
        if riga is not None and riga >= 0:
            self.tabella.selectRow(riga)
        testo = c.errore or riassunto(c.rapporto, len(c.usate))
        if c.attesa is not None:
            testo = self.tr("Press point %d again on the tablet.") % (c.attesa + 1) + "\n" + testo
        self.sommario.setText(testo)
        self.pulsanti.button(QDialogButtonBox.Ok).setEnabled(c.rapporto is not None and c.attesa is None)

