"""Calibrate (grid): the grid's origin, steps and counts, then its nodes
pressed on the tablet in order, East index fastest, with a live count; a
Cancel button of the puck takes the last node back. The report of the
fitted grid, with its node warnings, comes when the last node is in."""

import velmarin
from qgis.gui import QgsProjectionSelectionWidget
from qgis.PyQt.QtWidgets import (QDialog, QDialogButtonBox, QDoubleSpinBox, QFormLayout, QLabel, QPushButton,
                                 QSpinBox, QVBoxLayout)

from .calibrazione_punti import CONFERMA
from .impostazioni import nome_crs
from .ponte import sul_principale
from .rapporto import TabellaResidui, riassunto

ANNULLA = 8  # the function of the button that takes a node back


def _reale(valore):
    campo = QDoubleSpinBox()
    campo.setRange(-1e9, 1e9)
    campo.setDecimals(4)
    campo.setValue(valore)
    return campo


def _quadrati():
    campo = QSpinBox()
    campo.setRange(1, 21)
    campo.setValue(2)
    return campo


class DialogoGriglia(QDialog):
    def __init__(self, prova, funzione, crs, parent=None):
        super().__init__(parent)
        self.setWindowTitle(self.tr("Calibrate the tablet from a grid"))
        self.prova, self.funzione = prova, funzione
        self.nodi, self.rapporto, self.errore, self.avviata = [], None, "", False
        self.sistema = QgsProjectionSelectionWidget()
        self.sistema.setCrs(crs)
        self.quadrati_est, self.quadrati_nord = _quadrati(), _quadrati()
        self.est0, self.nord0, self.passo_est, self.passo_nord = _reale(0), _reale(0), _reale(100), _reale(100)
        self.avvia = QPushButton(self.tr("Start"))
        self.avvia.setAutoDefault(False)
        self.avvia.clicked.connect(self.inizia)
        self.stato = QLabel()
        self.stato.setWordWrap(True)
        self.tabella = TabellaResidui()
        self.pulsanti = QDialogButtonBox(QDialogButtonBox.Ok | QDialogButtonBox.Cancel)
        for p in self.pulsanti.buttons():
            p.setAutoDefault(False)
        self.pulsanti.accepted.connect(self.accept)
        self.pulsanti.rejected.connect(self.reject)
        modulo = QFormLayout()
        for nome, campo in (("Ground coordinates' CRS", self.sistema), ("Squares along East", self.quadrati_est),
                            ("Squares along North", self.quadrati_nord), ("East of node (0, 0)", self.est0),
                            ("North of node (0, 0)", self.nord0), ("East step", self.passo_est),
                            ("North step", self.passo_nord)):
            modulo.addRow(self.tr(nome), campo)
        verticale = QVBoxLayout(self)
        verticale.addLayout(modulo)
        for w in (self.avvia, self.stato, self.tabella, self.pulsanti):
            verticale.addWidget(w)
        self._aggiorna()

    def parametri(self):
        return [self.quadrati_est.value(), self.quadrati_nord.value(), self.est0.value(), self.nord0.value(),
                self.passo_est.value(), self.passo_nord.value()]

    def crs(self):
        return self.sistema.crs()

    def calibrazione(self):
        if self.rapporto is None:
            return None
        return {"kind": "grid", "grid": self.parametri(), "nodes": [list(n) for n in self.nodi],
                "crs": nome_crs(self.crs())}

    def inizia(self):
        if self.passo_est.value() == 0 or self.passo_nord.value() == 0:
            self.stato.setText(self.tr("The steps must not be zero."))
            return
        self.avviata, self.nodi, self.rapporto = True, [], None
        for campo in (self.sistema, self.quadrati_est, self.quadrati_nord, self.est0, self.nord0,
                      self.passo_est, self.passo_nord, self.avvia):
            campo.setEnabled(False)
        self._aggiorna()

    @sul_principale
    def su_pressione(self, bottone, x, y):
        if not self.avviata:
            return
        funzione = self.funzione(bottone)
        if funzione == CONFERMA and len(self.nodi) < self._quanti():
            self.nodi.append((x, y))
        elif funzione == ANNULLA and self.nodi:
            self.nodi.pop()
        else:
            return
        self._adatta()
        self._aggiorna()

    def _quanti(self):
        qe, qn = self.parametri()[:2]
        return (qe + 1) * (qn + 1)

    def _terreno(self, k):
        qe, _, e0, n0, pe, pn = self.parametri()
        return e0 + (k % (qe + 1)) * pe, n0 + (k // (qe + 1)) * pn

    def _adatta(self):
        self.rapporto, self.errore = None, ""
        if len(self.nodi) == self._quanti():
            try:
                self.prova.fit_grid(*self.parametri(), self.nodi)
                self.rapporto = self.prova.fit_report()
            except velmarin.VelmarinError as errore:
                self.errore = str(errore)

    def _aggiorna(self):
        n, tutti = len(self.nodi), self._quanti()
        righe = [(x, y) + self._terreno(k) for k, (x, y) in enumerate(self.nodi)]
        self.tabella.mostra(righe, self.rapporto, list(range(n)))
        if not self.avviata:
            testo = self.tr("Give the grid, then Start and press its nodes on the tablet, row by row from "
                            "node (0, 0), East fastest.")
        elif n < tutti:
            testo = self.tr("Node %d of %d: press East %.3f, North %.3f on the tablet (Cancel takes the "
                            "last node back).") % ((n + 1, tutti) + self._terreno(n))
        else:
            testo = self.errore or riassunto(self.rapporto)
        self.stato.setText(testo)
        self.pulsanti.button(QDialogButtonBox.Ok).setEnabled(self.rapporto is not None)
