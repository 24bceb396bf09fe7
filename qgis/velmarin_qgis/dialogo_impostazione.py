"""Set up: the tablet's model and port (from the library's port list, with
who holds a busy port), the model's settings, the buttons' functions, and
the digitizing distances. A new model brings the library's catalogue
settings for it."""

import copy

import velmarin
from qgis.PyQt.QtWidgets import (QCheckBox, QComboBox, QDialog, QDialogButtonBox, QDoubleSpinBox, QFormLayout,
                                 QGridLayout, QGroupBox, QHBoxLayout, QLabel, QPushButton, QSpinBox,
                                 QVBoxLayout)

from .impostazioni import CAMPI_RECORD

FUNZIONI = ((0, "None"), (1, "Confirm"), (2, "Line, streamed"), (4, "Line, point by point"),
            (5, "Polyline, streamed"), (6, "Polyline, point by point"), (8, "Cancel"))
VELOCITA = (300, 600, 1200, 2400, 4800, 9600, 19200)
PARITA = (("N", "None"), ("E", "Even"), ("O", "Odd"))


def record_del_modello(modello):
    """The catalogue's settings of `modello`, by the record's names."""
    return {nome: valore for nome, valore in velmarin.model_settings(modello).items() if nome in CAMPI_RECORD}


def _intero(minimo, massimo):
    campo = QSpinBox()
    campo.setRange(minimo, massimo)
    return campo


def _scelte(voci):
    campo = QComboBox()
    for dato, testo in voci:
        campo.addItem(testo, dato)
    return campo


def _scegli(campo, dato):
    indice = campo.findData(dato)
    if indice >= 0:
        campo.setCurrentIndex(indice)


class DialogoImpostazione(QDialog):
    def __init__(self, impostazione, parent=None):
        super().__init__(parent)
        self.setWindowTitle(self.tr("Set up the tablet"))
        self.impostazione = copy.deepcopy(impostazione)
        self.modello = _scelte([(m, velmarin.model_name(m)) for m in range(1, 9)])
        self.porta = QComboBox()
        self.aggiorna_porte = QPushButton(self.tr("Refresh"))
        self.aggiorna_porte.clicked.connect(self._porte)
        self.velocita = _scelte([(v, str(v)) for v in VELOCITA])
        self.parita = _scelte([(c, self.tr(t)) for c, t in PARITA])
        self.bit_dati, self.bit_stop = _intero(7, 8), _intero(1, 2)
        self.reset = QCheckBox(self.tr("Reset the tablet when the connection closes"))
        self.risoluzione = _intero(0, 32767)
        self.bottoni = _intero(1, 16)
        self.funzioni = [_scelte([(c, self.tr(t)) for c, t in FUNZIONI]) for _ in range(16)]
        self.limiti_definiti = QCheckBox(self.tr("The tablet's active area is known"))
        self.limiti = [_intero(-2**31, 2**31 - 1) for _ in range(4)]
        self.passo, self.tolleranza = QDoubleSpinBox(), QDoubleSpinBox()
        for campo, minimo in ((self.passo, 0.0001), (self.tolleranza, 0)):
            campo.setRange(minimo, 1e6)
            campo.setDecimals(4)
        self.pulsanti = QDialogButtonBox(QDialogButtonBox.Ok | QDialogButtonBox.Cancel)
        self.pulsanti.accepted.connect(self.accept)
        self.pulsanti.rejected.connect(self.reject)
        self.bottoni.valueChanged.connect(self._abilita_funzioni)
        self._disponi()
        self._porte()
        if self.impostazione.modello:
            _scegli(self.modello, self.impostazione.modello)
            self._mostra(self.impostazione.record or record_del_modello(self.impostazione.modello))
        else:
            self._mostra(record_del_modello(self.modello.currentData()))
        self.modello.currentIndexChanged.connect(lambda _: self._mostra(record_del_modello(self.modello.currentData())))
        self.passo.setValue(self.impostazione.passo_libero)
        self.tolleranza.setValue(self.impostazione.tolleranza)

    def _disponi(self):
        porta = QHBoxLayout()
        porta.addWidget(self.porta, 1)
        porta.addWidget(self.aggiorna_porte)
        modulo = QFormLayout()
        for nome, campo in (("Model", self.modello), ("Port", porta), ("Baud rate", self.velocita),
                            ("Parity", self.parita), ("Data bits", self.bit_dati), ("Stop bits", self.bit_stop),
                            ("", self.reset), ("Resolution code", self.risoluzione), ("Buttons", self.bottoni)):
            modulo.addRow(self.tr(nome), campo)
        funzioni = QGroupBox(self.tr("Button functions"))
        griglia = QGridLayout(funzioni)
        for i, campo in enumerate(self.funzioni):
            griglia.addWidget(QLabel(str(i + 1)), i % 8, 2 * (i // 8))
            griglia.addWidget(campo, i % 8, 2 * (i // 8) + 1)
        limiti = QGroupBox(self.tr("Active area, in counts"))
        riquadro = QFormLayout(limiti)
        riquadro.addRow(self.limiti_definiti)
        for nome, campo in zip(("X min", "Y min", "X max", "Y max"), self.limiti):
            riquadro.addRow(self.tr(nome), campo)
        distanze = QFormLayout()
        distanze.addRow(self.tr("Streamed vertices every (ground units)"), self.passo)
        distanze.addRow(self.tr("Polygon closing tolerance (ground units)"), self.tolleranza)
        verticale = QVBoxLayout(self)
        for parte in (modulo, funzioni, limiti, distanze, self.pulsanti):
            (verticale.addLayout if isinstance(parte, QFormLayout) else verticale.addWidget)(parte)

    def _porte(self):
        """The machine's ports; a busy one says who holds it. The set-up's
        own port stays in the list even when the machine no longer shows it."""
        self.porta.clear()
        voci = [(p.port, p.device, p.description, p.busy, p.holder) for p in velmarin.list_ports()]
        scelta = (self.impostazione.porta, self.impostazione.dispositivo)
        if scelta[0] and not any((v[0], v[1]) == scelta or (v[0] == scelta[0] and not scelta[1]) for v in voci):
            voci.insert(0, (scelta[0], scelta[1], self.tr("not found now"), False, None))
        for porta, dispositivo, descrizione, occupata, chi in voci:
            testo = "%s  %s" % ("COM%d" % porta if porta else "\u2014", dispositivo)
            if descrizione:
                testo += " (%s)" % descrizione
            if occupata:
                testo += self.tr(" \u2014 busy, held by %s") % chi if chi else self.tr(" \u2014 busy")
            self.porta.addItem(testo, (porta, dispositivo))
        for i in range(self.porta.count()):
            porta, dispositivo = self.porta.itemData(i)
            if porta == scelta[0] and (dispositivo == scelta[1] or not scelta[1]):
                self.porta.setCurrentIndex(i)

    def _mostra(self, record):
        _scegli(self.velocita, record["velocita"])
        _scegli(self.parita, record["parita"])
        self.bit_dati.setValue(record["bitDati"])
        self.bit_stop.setValue(record["bitStop"])
        self._reset_acceso = record["reset"] if record["reset"] != 1 else 2
        self.reset.setChecked(record["reset"] != 1)
        self.risoluzione.setValue(record["risoluzione"])
        self.bottoni.setValue(record["numBottoni"])
        for campo, codice in zip(self.funzioni, record["funzBott"]):
            _scegli(campo, codice)
        self.limiti_definiti.setChecked(bool(record["limitiDefiniti"]))
        for campo, nome in zip(self.limiti, ("xMin", "yMin", "xMax", "yMax")):
            campo.setValue(record[nome])
        self._abilita_funzioni(record["numBottoni"])

    def _abilita_funzioni(self, quanti):
        for i, campo in enumerate(self.funzioni):
            campo.setEnabled(i < quanti)

    def risultato(self):
        """The set-up as the dialog shows it; a port the machine gives no
        COM number gets the first number no other port has."""
        imp = self.impostazione
        modello = self.modello.currentData()
        if modello != imp.modello:
            imp.calibrazione = None  # another tablet's counts
        imp.modello = modello
        porta, dispositivo = self.porta.currentData() or (None, "")
        if porta is None and dispositivo:
            prese = {self.porta.itemData(i)[0] for i in range(self.porta.count())}
            porta = next(n for n in range(1, 256) if n not in prese)
        imp.porta, imp.dispositivo = porta, dispositivo or ""
        imp.record = {
            "velocita": self.velocita.currentData(), "parita": self.parita.currentData(),
            "bitDati": self.bit_dati.value(), "bitStop": self.bit_stop.value(),
            "reset": self._reset_acceso if self.reset.isChecked() else 1,
            "risoluzione": self.risoluzione.value(), "numBottoni": self.bottoni.value(),
            "funzBott": [c.currentData() for c in self.funzioni],
            "limitiDefiniti": self.limiti_definiti.isChecked(),
            **{nome: campo.value() for campo, nome in zip(self.limiti, ("xMin", "yMin", "xMax", "yMax"))}}
        imp.passo_libero, imp.tolleranza = self.passo.value(), self.tolleranza.value()
        return imp
