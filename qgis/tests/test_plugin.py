"""The QGIS plugin, headless, against velmarin-sim on a pseudo-terminal:
loading and unloading, both calibrations from presses on the tablet, and
digitizing into memory layers in CRSs of their own."""

import os
import tempfile

# QGIS's settings go to a folder of the test's own.
_CASA = tempfile.mkdtemp(prefix="velmarin-qgis-")
os.environ["XDG_CONFIG_HOME"] = os.environ["XDG_DATA_HOME"] = _CASA

import unittest  # noqa: E402

from ambiente import InterfacciaFinta, elimina_rimandati  # noqa: E402
from banco import (LIMITI, MONTE_MARIO, PORTA, PUNTI, Simulatore, attendi, imposta_su, in_modifica,  # noqa: E402
                   strato_memoria, terreno)
from qgis.core import (QgsCoordinateReferenceSystem, QgsCoordinateTransform, QgsEditFormConfig,  # noqa: E402
                       QgsFeature, QgsGeometry, QgsPointXY, QgsProject, QgsSnappingConfig, QgsTolerance,
                       QgsVectorLayer)
from qgis.PyQt import sip  # noqa: E402
from qgis.PyQt.QtCore import QPoint, Qt  # noqa: E402
from qgis.PyQt.QtTest import QTest  # noqa: E402
from qgis.gui import QgsAttributeDialog  # noqa: E402
from qgis.PyQt.QtWidgets import QApplication, QDialogButtonBox, QLineEdit  # noqa: E402

import velmarin  # noqa: E402
from velmarin_qgis import classFactory, impostazioni  # noqa: E402
from velmarin_qgis.dialogo_impostazione import DialogoImpostazione  # noqa: E402
from velmarin_qgis.geometria import Rifiuto, geometria  # noqa: E402
from velmarin_qgis.ponte import Ponte  # noqa: E402

def trasforma(da, a, punto):
    return QgsCoordinateTransform(QgsCoordinateReferenceSystem(da), QgsCoordinateReferenceSystem(a),
                                  QgsProject.instance()).transform(QgsPointXY(*punto))


class ConIlPlugin(unittest.TestCase):
    """A plugin loaded into a fresh interface, its set-up on a fresh simulator."""

    def setUp(self):
        Ponte.fuori_thread = 0
        self.sim = Simulatore()
        imposta_su(self.sim.dispositivo)
        self.iface = InterfacciaFinta()
        self.plugin = classFactory(self.iface)
        self.plugin.initGui()

    def tearDown(self):
        self.plugin.unload()
        self.sim.chiudi()
        QgsProject.instance().clear()
        self.assertEqual(Ponte.fuori_thread, 0, "a slot was reached off QGIS's main thread")

    def stato(self):
        return self.plugin.stato.text()


class Carica(ConIlPlugin):
    def test_a_lost_line_is_opened_again(self):
        self.assertIsNotNone(self.plugin.punti())
        self.sim.chiudi()  # the adapter pulled during a calibration
        attendi(lambda: self.plugin.tavoletta.line_state == "lost")
        self.plugin.ferma()
        self.sim = Simulatore()  # and put back, where the set-up now finds it
        velmarin.map_port(PORTA, self.sim.dispositivo)
        dialogo = self.plugin.punti()
        self.assertIn("line open", self.stato())
        self.sim.premi(2000, 3000, 1)
        attendi(lambda: dialogo.controllo.righe)

    def test_toolbar_menu_and_status_come_and_go(self):
        barra = self.iface.finestra.findChild(type(self.plugin.barra), "velmarinTablet")
        self.assertIn("&Tablet", [a.text() for a in self.iface.finestra.menuBar().actions()])
        self.assertIn("Summa", self.stato())
        self.assertIn("COM7", self.stato())
        self.assertIn("not calibrated", self.stato())
        self.assertFalse(self.plugin.azioni["ferma"].isEnabled())

        self.plugin.unload()
        elimina_rimandati()
        self.assertEqual([a.text() for a in self.iface.finestra.menuBar().actions() if a.isVisible()], ["&Help"])
        self.assertTrue(sip.isdeleted(barra))
        self.plugin = classFactory(self.iface)  # tearDown's unload, of a plugin loaded again
        self.plugin.initGui()

    def test_a_refused_port_says_which_and_why(self):
        self.sim.chiudi()
        self.sim = Simulatore()
        imp = impostazioni.leggi()
        imp.dispositivo = os.path.join(_CASA, "no-such-tty")
        self.plugin.impostazione = imp
        self.assertIsNone(self.plugin.punti())
        self.assertIn("no-such-tty", self.iface.barra.messaggi[-1])
        self.assertIn("line closed", self.stato())


class CalibraPunti(ConIlPlugin):
    PUNTI = PUNTI

    def prendi(self, dialogo, x, y, est, nord):
        righe = len(dialogo.controllo.righe)
        self.sim.premi(x, y, 1)
        attendi(lambda: len(dialogo.controllo.righe) > righe or dialogo.controllo.attesa is None
                and [x, y] in [r[:2] for r in dialogo.controllo.righe])
        dialogo.est.setText(repr(est))
        dialogo.nord.setText(repr(nord))
        QTest.keyClick(dialogo.nord, Qt.Key_Return)

    def test_typed_points_give_the_report_of_the_library(self):
        QgsProject.instance().setCrs(QgsCoordinateReferenceSystem(MONTE_MARIO))
        dialogo = self.plugin.punti()
        self.assertIsNotNone(dialogo, self.iface.barra.messaggi)
        self.sim.premi(1000, 1000, 4)  # a Cancel button takes no point
        dati = [terreno(x, y) for x, y in self.PUNTI]
        dati[2] = (dati[2][0] + 0.08, dati[2][1])  # a point given 8 cm off
        for (x, y), (e, n) in zip(self.PUNTI, dati):
            self.prendi(dialogo, x, y, e, n)
        ok = dialogo.pulsanti.button(QDialogButtonBox.Ok)
        self.assertTrue(ok.isEnabled())

        atteso = velmarin.Tablet(5, **LIMITI)
        atteso.fit_points([p + d for p, d in zip(self.PUNTI, dati)])
        rapporto = atteso.fit_report()
        for r, p in enumerate(rapporto.points):
            self.assertEqual((dialogo.tabella.item(r, 0).text(), dialogo.tabella.item(r, 1).text()), (str(p.x), str(p.y)))
            for c, v in zip(range(4, 8), (p.residual_east, p.residual_north, p.loo_east, p.loo_north)):
                self.assertAlmostEqual(float(dialogo.tabella.item(r, c).text()), v, delta=5e-5)
        self.assertIn("RMS of the residuals %.4f" % rapporto.rms, dialogo.sommario.text())
        self.assertIn(2, rapporto.worst)

        ok.click()
        attendi(lambda: "not calibrated" not in self.stato())
        e, n = self.plugin.tavoletta.to_ground(20000, 20000)
        self.assertAlmostEqual(e, 1501000, delta=0.05)
        self.assertAlmostEqual(n, 5001000, delta=0.05)
        tenuta = impostazioni.leggi().calibrazione
        self.assertEqual((tenuta["kind"], len(tenuta["points"]), tenuta["crs"]), ("points", 4, MONTE_MARIO))

    def test_points_redone_removed_and_taken_from_the_map_and_a_layer(self):
        self.iface.canvas.setDestinationCrs(QgsCoordinateReferenceSystem("EPSG:3857"))
        QgsProject.instance().setCrs(QgsCoordinateReferenceSystem(MONTE_MARIO))
        dialogo = self.plugin.punti()
        self.assertEqual(dialogo.crs().authid(), MONTE_MARIO)
        for x, y in self.PUNTI[:3]:
            self.prendi(dialogo, x, y, *terreno(x, y))
        self.assertIn("Three points: nothing checks them", dialogo.sommario.text())

        # Point 2 again, at other counts: it waits, and OK with it.
        dialogo.tabella.selectRow(1)
        dialogo.rifai.click()
        self.assertFalse(dialogo.pulsanti.button(QDialogButtonBox.Ok).isEnabled())
        self.sim.premi(30000, 5000, 1)
        attendi(lambda: dialogo.controllo.righe[1][:2] == [30000, 5000])
        self.assertTrue(dialogo.pulsanti.button(QDialogButtonBox.Ok).isEnabled())

        # A fourth point clicked on the map, in the map's CRS.
        self.sim.premi(20000, 20000, 1)
        attendi(lambda: len(dialogo.controllo.righe) == 4)
        self.iface.canvas.setExtent(self.iface.canvas.extent())  # the canvas's transform as shown
        dialogo.dalla_mappa.setChecked(True)
        pixel = QPoint(300, 200)
        QTest.mouseClick(self.iface.canvas.viewport(), Qt.LeftButton, Qt.NoModifier, pixel)
        cliccato = self.iface.canvas.getCoordinateTransform().toMapCoordinates(pixel)
        atteso = trasforma("EPSG:3857", MONTE_MARIO, (cliccato.x(), cliccato.y()))
        self.assertAlmostEqual(dialogo.controllo.righe[3][2], atteso.x(), delta=1e-6)
        self.assertAlmostEqual(dialogo.controllo.righe[3][3], atteso.y(), delta=1e-6)

        # The same point from a feature of a point layer in longitude and latitude.
        strato = QgsVectorLayer("Point?crs=EPSG:4326", "capisaldi", "memory")
        lonlat = trasforma(MONTE_MARIO, "EPSG:4326", terreno(20000, 20000))
        f = QgsFeature()
        f.setGeometry(QgsGeometry.fromPointXY(lonlat))
        strato.dataProvider().addFeatures([f])
        QgsProject.instance().addMapLayer(strato)
        strato.selectAll()
        dialogo.strato.setLayer(strato)
        dialogo.dallo_strato.click()
        self.assertAlmostEqual(dialogo.controllo.righe[3][2], 1501000, delta=0.01)  # a datum shift there and back
        self.assertAlmostEqual(dialogo.controllo.righe[3][3], 5001000, delta=0.01)
        self.assertEqual(dialogo.controllo.usate, [0, 1, 2, 3])

        # Point 3 pressed again after point 1 went: the press still finds it.
        dialogo.tabella.selectRow(2)
        dialogo.rifai.click()
        r = dialogo.controllo.rapporto  # of rows 0, 1 and 3, shown beside them
        self.assertEqual(dialogo.tabella.item(2, 4).text(), "")
        for riga, p in zip((0, 1, 3), r.points):
            self.assertAlmostEqual(float(dialogo.tabella.item(riga, 4).text()), p.residual_east, delta=5e-5)
        dialogo.tabella.selectRow(0)
        dialogo.rimuovi.click()
        self.sim.premi(33000, 36000, 1)
        attendi(lambda: dialogo.controllo.attesa is None)
        self.assertEqual([r[:2] for r in dialogo.controllo.righe], [[30000, 5000], [33000, 36000], [20000, 20000]])
        dialogo.pulsanti.button(QDialogButtonBox.Cancel).click()
        self.assertIsNone(impostazioni.leggi().calibrazione)
        self.assertIn("not calibrated", self.stato())


class Imposta(ConIlPlugin):
    def test_the_dialog_lists_the_port_and_brings_a_new_models_settings(self):
        imp = imposta_su(self.sim.dispositivo, calibrata=True)
        dialogo = DialogoImpostazione(imp)
        voce = dialogo.porta.currentText()
        self.assertTrue(voce.startswith("COM7  " + self.sim.dispositivo), voce)
        self.assertEqual(dialogo.risultato(), imp)  # shown as stored, given back as shown

        dialogo.modello.setCurrentIndex(dialogo.modello.findData(2))
        dialogo.bottoni.setValue(3)
        self.assertEqual([c.isEnabled() for c in dialogo.funzioni[2:4]], [True, False])
        dialogo.funzioni[2].setCurrentIndex(dialogo.funzioni[2].findData(8))
        dialogo.reset.setChecked(False)
        nuova = dialogo.risultato()
        atteso = dict(velmarin.model_settings(2), numBottoni=3, reset=1)
        atteso["funzBott"][2] = 8
        self.assertEqual(nuova.record, {k: atteso[k] for k in nuova.record})
        self.assertEqual((nuova.modello, nuova.porta, nuova.calibrazione), (2, PORTA, None))


class CalibraDiNuovo(ConIlPlugin):
    def test_a_calibration_given_up_leaves_the_one_in_force(self):
        self.plugin.impostazione = imposta_su(self.sim.dispositivo, calibrata=True)
        dialogo = self.plugin.punti()
        prima = self.plugin.tavoletta.to_ground(20000, 20000)
        for x, y in PUNTI[:3]:  # fitted on the tablet in use as they come
            self.sim.premi(x, y, 1)
            attendi(lambda: dialogo.controllo.attesa is None and len(dialogo.controllo.righe) == PUNTI.index((x, y)) + 1)
            dialogo.est.setText("%r" % (terreno(x, y)[0] + 500))
            dialogo.nord.setText("%r" % terreno(x, y)[1])
            dialogo.imposta.click()
        self.assertNotEqual(self.plugin.tavoletta.to_ground(20000, 20000), prima)
        dialogo.pulsanti.button(QDialogButtonBox.Cancel).click()
        self.assertEqual(self.plugin.tavoletta.to_ground(20000, 20000), prima)
        self.assertEqual(impostazioni.leggi().calibrazione["points"][0][2], terreno(*PUNTI[0])[0])


class CalibraGriglia(ConIlPlugin):
    def test_nodes_in_order_with_one_taken_back(self):
        dialogo = self.plugin.griglia()
        dialogo.est0.setValue(1500000)
        dialogo.nord0.setValue(5002000)
        dialogo.passo_est.setValue(1000)
        dialogo.passo_nord.setValue(-1000)  # rows from the top of the sheet down
        dialogo.avvia.click()
        nodi = [(x, y) for y in (40000, 20000, 0) for x in (0, 20000, 40000)]
        for k, (x, y) in enumerate(nodi):
            if k == 4:  # a wrong node, taken back with Cancel
                self.sim.premi(x + 7000, y, 1)
                attendi(lambda: len(dialogo.nodi) == 5)
                self.sim.premi(x, y, 4)
                attendi(lambda: len(dialogo.nodi) == 4)
            self.assertIn("Node %d of 9: press East %.3f, North %.3f" % (k + 1, 1500000 + 1000 * (k % 3), 5002000 - 1000 * (k // 3)),
                          dialogo.stato.text())
            self.sim.premi(x, y, 1)
            attendi(lambda: len(dialogo.nodi) == k + 1)
        self.assertEqual(dialogo.nodi, nodi)
        self.assertEqual(dialogo.rapporto.kind, "grid")
        self.assertIn("9 nodes fitted", dialogo.stato.text())
        dialogo.pulsanti.button(QDialogButtonBox.Ok).click()
        attendi(lambda: "not calibrated" not in self.stato())
        for valore, atteso in zip(self.plugin.tavoletta.to_ground(10000, 30000), (1500500, 5001500)):
            self.assertAlmostEqual(valore, atteso, delta=1e-4)


class Geometria(unittest.TestCase):
    def test_each_kind_goes_into_the_layers_that_take_it_in_their_own_type(self):
        quadrato = [QgsPointXY(x, y) for x, y in ((0, 0), (0, 1), (1, 1), (1, 0), (0, 0))]
        for tipo, presi in (("Point", {"point"}), ("PointZ", {"point"}), ("MultiLineStringM", {"line", "polyline", "polygon"}),
                            ("LineStringZ", {"line", "polyline", "polygon"}), ("MultiPolygonZM", {"polygon"})):
            strato = QgsVectorLayer(tipo + "?crs=EPSG:3003", "s", "memory")
            for genere in ("point", "line", "polyline", "polygon"):
                with self.subTest(tipo=tipo, genere=genere):
                    if genere not in presi:
                        self.assertRaises(Rifiuto, geometria, genere, quadrato, strato)
                        continue
                    g = geometria(genere, quadrato[:1] if genere == "point" else quadrato, strato)
                    self.assertEqual(g.wkbType(), strato.wkbType())
                    vertici = [(p.x(), p.y()) for p in g.vertices()]
                    if genere == "polygon":  # a ring, in a line layer too
                        self.assertEqual(vertici, [(0, 0), (0, 1), (1, 1), (1, 0), (0, 0)])


def vertici_di(elemento):
    return [(round(p.x(), 6), round(p.y(), 6)) for p in elemento.geometry().vertices()]


def vertici(strato):
    return [vertici_di(f) for f in strato.getFeatures()]


class Digitalizza(ConIlPlugin):
    def setUp(self):
        super().setUp()
        self.plugin.impostazione = imposta_su(self.sim.dispositivo, calibrata=True)
        self.iface.canvas.setDestinationCrs(QgsCoordinateReferenceSystem(MONTE_MARIO))
        self.iface.canvas.setExtent(QgsGeometry.fromWkt("POINT(1501000 5001000)").buffer(300, 4).boundingBox())

    def digitalizza(self, strato):
        self.iface.strato = strato
        sessione = self.plugin.digitalizza()
        self.assertIsNotNone(sessione, self.iface.barra.messaggi)
        return sessione

    def atteso(self, crs, *conteggi):
        return [(round(p.x(), 6), round(p.y(), 6)) for p in (trasforma(MONTE_MARIO, crs, terreno(x, y)) for x, y in conteggi)]

    def test_points_lines_and_undo_in_memory_layers_of_their_own_crs(self):
        punti = strato_memoria("Point", "EPSG:4326", "pozzi")
        punti.rollBack()
        self.iface.strato = punti
        self.assertIsNone(self.plugin.digitalizza())
        self.assertIn("Toggle editing on \u201cpozzi\u201d", self.iface.barra.messaggi[-1])
        punti.startEditing()
        linee = strato_memoria("MultiLineString", MONTE_MARIO, "fossi")
        sessione = self.digitalizza(punti)
        self.assertIn("digitizing into \u201cpozzi\u201d", self.stato())
        self.sim.premi(20000, 20000, 1)
        attendi(lambda: punti.featureCount() == 1)
        self.sim.premi(4000, 4000, 3)  # a line into a point layer
        self.sim.premi(8000, 4000, 1)
        attendi(lambda: len(self.iface.barra.messaggi) == 2)
        self.assertIn("A line cannot go into \u201cpozzi\u201d, which holds points", self.iface.barra.messaggi[-1])
        self.assertEqual(vertici(punti), [self.atteso("EPSG:4326", (20000, 20000))])
        self.assertIs(self.plugin.attivita, sessione)

        self.plugin.ferma()
        self.assertIsNone(self.plugin.attivita)
        sessione = self.digitalizza(linee)
        self.sim.premi(4000, 8000, 2)  # a polyline, its third vertex undone
        self.sim.premi(8000, 8000, 1)
        self.sim.premi(9000, 9000, 1)
        attendi(lambda: sessione.banda.numberOfVertices() == 3)
        self.plugin.azioni["annulla"].trigger()
        attendi(lambda: sessione.banda.numberOfVertices() == 2)
        self.sim.premi(8000, 12000, 1)
        self.sim.premi(8000, 12000, 4)
        attendi(lambda: linee.featureCount() == 1)
        self.assertEqual(vertici(linee), [self.atteso(MONTE_MARIO, (4000, 8000), (8000, 8000), (8000, 12000))])
        self.assertEqual([f.geometry().wkbType() for f in linee.getFeatures()], [linee.wkbType()])
        self.assertEqual(sessione.banda.numberOfVertices(), 0)
        self.assertEqual(sessione.marcatore.center(), QgsPointXY(*terreno(8000, 12000)))

        linee.undoStack().undo()  # QGIS's undo takes the feature back
        self.assertEqual(linee.featureCount(), 0)
        self.sim.sposta(39000, 39000)  # far out of the view: the map follows the puck
        dove = QgsPointXY(*terreno(39000, 39000))
        attendi(lambda: self.iface.canvas.extent().contains(dove))
        self.sim.premi(39000, 39000, 4)  # Cancel with nothing open ends the session
        attendi(lambda: self.plugin.attivita is None)
        self.assertNotIn("not calibrated", self.stato())
        self.assertNotIn("digitizing", self.stato())

    def test_the_attribute_form_asks_and_adds_the_feature(self):
        pozzi = strato_memoria("Point", MONTE_MARIO, "pozzi")
        modulo = pozzi.editFormConfig()
        modulo.setSuppress(QgsEditFormConfig.SuppressOff)
        pozzi.setEditFormConfig(modulo)
        self.digitalizza(pozzi)
        self.sim.premi(20000, 20000, 1)
        attendi(lambda: [w for w in QApplication.topLevelWidgets() if isinstance(w, QgsAttributeDialog)])
        dialogo = next(w for w in QApplication.topLevelWidgets() if isinstance(w, QgsAttributeDialog))
        self.assertEqual(pozzi.featureCount(), 0)  # not before the form's OK
        QTest.keyClicks(dialogo.findChild(QLineEdit, "nome"), "P1")  # the field's editor, as the user types
        dialogo.accept()
        self.assertEqual([(f["nome"], vertici_di(f)) for f in pozzi.getFeatures()],
                         [("P1", self.atteso(MONTE_MARIO, (20000, 20000)))])
        # A layer without fields has nothing to ask: the feature goes in at once.
        nudi = in_modifica(QgsVectorLayer("Point?crs=" + MONTE_MARIO, "nudi", "memory"))
        nudi.setEditFormConfig(modulo)
        self.plugin.ferma()
        self.digitalizza(nudi)
        self.sim.premi(21000, 21000, 1)
        attendi(lambda: nudi.featureCount() == 1)

    def test_a_press_snaps_as_a_click_does(self):
        pozzi = strato_memoria("Point", MONTE_MARIO, "pozzi")
        esistente = QgsFeature(pozzi.fields())
        esistente.setGeometry(QgsGeometry.fromPointXY(QgsPointXY(*terreno(20000, 20000))))
        pozzi.addFeature(esistente)
        self.iface.canvas.setLayers([pozzi])
        aggancio = QgsSnappingConfig(QgsProject.instance())
        aggancio.setEnabled(True)
        aggancio.setMode(QgsSnappingConfig.AllLayers)
        aggancio.setTypeFlag(QgsSnappingConfig.VertexFlag)
        aggancio.setTolerance(10)
        aggancio.setUnits(QgsTolerance.Pixels)
        self.iface.canvas.snappingUtils().setConfig(aggancio)
        self.digitalizza(pozzi)
        self.sim.premi(20010, 20010, 1)  # half a metre off, under a pixel
        attendi(lambda: pozzi.featureCount() == 2)
        self.assertEqual(vertici(pozzi), [self.atteso(MONTE_MARIO, (20000, 20000))] * 2)

    def test_removing_the_layer_ends_the_session(self):
        fossi = strato_memoria("LineString", MONTE_MARIO, "fossi")
        self.digitalizza(fossi)
        QgsProject.instance().removeMapLayer(fossi)
        self.assertIsNone(self.plugin.attivita)
        self.assertNotIn("digitizing", self.stato())


if __name__ == "__main__":
    unittest.main()
