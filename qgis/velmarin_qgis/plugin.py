"""The plugin: the Tablet toolbar and menu, their actions, and the status
label. One activity at a time holds the tablet's listener: a calibration
dialog or a digitizing session; Stop ends it."""

import os

import velmarin
from qgis.core import Qgis, QgsProject, QgsSettings
from qgis.PyQt.QtCore import QCoreApplication, QTranslator
from qgis.PyQt.QtGui import QIcon
from qgis.PyQt.QtWidgets import QAction, QLabel, QMenu

from . import impostazioni, tavoletta
from .impostazioni import crs_da
from .calibrazione_griglia import DialogoGriglia
from .calibrazione_punti import DialogoPunti
from .dialogo_impostazione import DialogoImpostazione
from .digitalizzazione import Digitalizzatore, strato_adatto
from .ponte import Ponte, sul_principale

TITOLO = "velmarin tablet"
_ICONE = os.path.join(os.path.dirname(__file__), "icone")

# key, text, icon
AZIONI = (("imposta", "Set Up Tablet\u2026", "tavoletta"),
          ("punti", "Calibrate from Points\u2026", "calibra_punti"),
          ("griglia", "Calibrate from Grid\u2026", "calibra_griglia"),
          ("digitalizza", "Digitize", "digitalizza"),
          ("annulla", "Undo Last Vertex", "annulla_vertice"),
          ("ferma", "Stop", "ferma"))


def tr(testo):
    return QCoreApplication.translate("velmarin", testo)


class PluginVelmarin:
    def __init__(self, iface):
        self.iface = iface
        self.impostazione = impostazioni.leggi()
        self.tavoletta = None   # velmarin.Tablet of the set-up, made when first needed
        self.attivita = None    # the open calibration dialog or the Digitalizzatore
        self.ponte = Ponte()
        self.azioni = {}

    # QGIS's calls.
    def initGui(self):
        self._traduzione()
        finestra = self.iface.mainWindow()
        self.barra = self.iface.addToolBar(tr("Tablet"))
        self.barra.setObjectName("velmarinTablet")
        self.menu = QMenu(tr("&Tablet"), finestra)
        self.menu.setObjectName("velmarinTabletMenu")
        for chiave, testo, icona in AZIONI:
            azione = QAction(QIcon(os.path.join(_ICONE, icona + ".svg")), tr(testo), finestra)
            azione.setObjectName("velmarin_" + chiave)
            azione.triggered.connect(getattr(self, chiave))
            self.barra.addAction(azione)
            self.menu.addAction(azione)
            self.azioni[chiave] = azione
        self.stato = QLabel()
        self.stato.setObjectName("velmarinStatus")
        self.barra.addWidget(self.stato)
        barra_menu = finestra.menuBar()
        barra_menu.insertMenu(self.iface.firstRightStandardMenu().menuAction(), self.menu)
        self.ponte.collega(self.ponte.errore, self._errore_richiamo)
        self.aggiorna()

    def unload(self):
        self.ferma()
        self._chiudi_tavoletta()
        self.menu.menuAction().setVisible(False)
        self.iface.mainWindow().menuBar().removeAction(self.menu.menuAction())
        self.menu.deleteLater()
        self.barra.deleteLater()
        self.ponte.scollega(self.ponte.errore, self._errore_richiamo)
        if self.traduttore is not None:
            QCoreApplication.removeTranslator(self.traduttore)

    def _traduzione(self):
        """The texts are English; i18n/velmarin_qgis_<language>.qm, made with
        Qt Linguist, translates them into the user's QGIS language."""
        lingua = (QgsSettings().value("locale/userLocale", "", type=str) or "")[:2]
        percorso = os.path.join(os.path.dirname(__file__), "i18n", "velmarin_qgis_%s.qm" % lingua)
        self.traduttore = QTranslator() if os.path.isfile(percorso) else None
        if self.traduttore is not None and self.traduttore.load(percorso):
            QCoreApplication.installTranslator(self.traduttore)

    # The actions.
    def imposta(self):
        self.ferma()
        dialogo = DialogoImpostazione(self.impostazione, self.iface.mainWindow())
        if dialogo.exec_():
            self._chiudi_tavoletta()
            self.impostazione = dialogo.risultato()
            impostazioni.scrivi(self.impostazione)
        self.aggiorna()

    def punti(self):
        return self._calibra(lambda prova, funzione, crs: DialogoPunti(self.iface.mapCanvas(), prova, funzione, crs,
                                                                self.iface.mainWindow()))

    def griglia(self):
        return self._calibra(lambda prova, funzione, crs: DialogoGriglia(prova, funzione, crs, self.iface.mainWindow()))

    def digitalizza(self):
        strato = self.iface.activeLayer()
        motivo = strato_adatto(strato)
        if motivo is None and not self._calibrata():
            motivo = "Calibrate the tablet first."
        if motivo:
            return self._avvisa(tr(motivo))
        t = self._collegata()
        if t is None:
            return None
        if not t.is_calibrated:  # its stored calibration no longer fits
            return self._avvisa(tr("Calibrate the tablet first."))
        self.ferma()
        crs = crs_da(self.impostazione.calibrazione.get("crs"))
        try:
            self.attivita = Digitalizzatore(self.iface, t, self.ponte, crs, strato,
                                            self.impostazione.passo_libero, self.impostazione.tolleranza)
        except (velmarin.VelmarinError, ValueError) as errore:
            return self._avvisa(tr("Digitizing could not start: %s") % errore)
        self.attivita.rifiutato.connect(self._avvisa)
        self.attivita.terminato.connect(self._finita)
        self.aggiorna()
        return self.attivita

    def annulla(self):
        if isinstance(self.attivita, Digitalizzatore):
            self.attivita.annulla_vertice()

    def ferma(self):
        """Ends the calibration dialog or the digitizing session in course."""
        attivita, self.attivita = self.attivita, None
        if isinstance(attivita, Digitalizzatore):
            attivita.ferma()
        elif attivita is not None:
            attivita.reject()
        if attivita is not None and self.tavoletta is not None:
            self.tavoletta.stop()
        self.aggiorna()

    # The tablet.
    def _collegata(self):
        """The set-up's tablet, connected; None, with the reason shown, when it cannot be."""
        if not self.impostazione.modello or not self.impostazione.porta:
            self._avvisa(tr("Set up the tablet first: its model and its port."))
            return None
        try:
            if self.tavoletta is None:
                self.tavoletta = tavoletta.crea(self.impostazione)
            if self.tavoletta.line_state != "open":
                self.tavoletta.connect()
        except (velmarin.VelmarinError, OSError, ValueError, TypeError) as errore:
            self._avvisa(tr("The tablet could not be connected: %s") % errore)
            return None
        finally:
            self.aggiorna()
        return self.tavoletta

    def _chiudi_tavoletta(self):
        if self.tavoletta is not None:
            self.tavoletta.close()
            self.tavoletta = None

    def _calibrata(self):
        if self.tavoletta is not None:
            return self.tavoletta.is_calibrated
        return bool(self.impostazione.calibrazione)

    def _calibra(self, crea_dialogo):
        t = self._collegata()
        if t is None:
            return None
        self.ferma()
        cal = self.impostazione.calibrazione
        crs = crs_da(cal["crs"]) if cal else QgsProject.instance().crs()
        dialogo = crea_dialogo(t, t.button_function, crs)
        self.ponte.collega(self.ponte.pressione, dialogo.su_pressione)
        t.listen(on_button=self.ponte.pressione.emit, on_error=self.ponte.su_errore)
        dialogo.finished.connect(lambda esito: self._calibrazione_finita(dialogo, esito))
        self.attivita = dialogo
        dialogo.show()
        self.aggiorna()
        return dialogo

    def _calibrazione_finita(self, dialogo, esito):
        self.ponte.scollega(self.ponte.pressione, dialogo.su_pressione)
        if self.attivita is dialogo:
            self.attivita = None
            self.tavoletta.stop()
        calibrazione = dialogo.calibrazione() if esito else None
        try:
            if calibrazione is not None:
                tavoletta.applica(self.tavoletta, calibrazione)
                self.impostazione.calibrazione = calibrazione
                impostazioni.scrivi(self.impostazione)
            elif self.tavoletta is not None:
                tavoletta.ripristina(self.tavoletta, self.impostazione.calibrazione)
        except velmarin.VelmarinError as errore:
            self._avvisa(tr("The calibration was not set: %s") % errore)
        self.aggiorna()

    @sul_principale
    def _finita(self):
        self.attivita = None
        self.aggiorna()

    # What the user sees.
    def aggiorna(self):
        """The status label, and which actions make sense now."""
        imp, t = self.impostazione, self.tavoletta
        if not imp.modello:
            testo = tr("No tablet set up")
        else:
            stato = t.line_state if t is not None else "closed"
            testo = "%s \u00b7 COM%s \u00b7 %s \u00b7 %s" % (
                velmarin.model_name(imp.modello), imp.porta, tr("line " + stato),
                tr("calibrated") if self._calibrata() else tr("not calibrated"))
            if isinstance(self.attivita, Digitalizzatore):
                testo += " \u00b7 " + tr("digitizing into \u201c%s\u201d") % self.attivita.strato.name()
        self.stato.setText(testo)
        libera = self.attivita is None
        self.azioni["digitalizza"].setEnabled(libera)
        self.azioni["annulla"].setEnabled(isinstance(self.attivita, Digitalizzatore))
        self.azioni["ferma"].setEnabled(not libera)

    def _avvisa(self, testo):
        self.iface.messageBar().pushMessage(TITOLO, testo, Qgis.Warning, 8)

    @sul_principale
    def _errore_richiamo(self, testo):
        self.iface.messageBar().pushMessage(TITOLO, tr("Internal error: %s") % testo, Qgis.Critical, 0)
