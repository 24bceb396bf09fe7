"""The Python module on a tablet played by the test itself on a
pseudo-terminal: callbacks, a refused port, fits and ground coordinates,
names, and a callback that raises."""

import gc
import io
import os
import sys
import threading
import unittest

import velmarin

# Model 2 sends "x,y,button" CR LF lines, decoded one per 40-byte gather.
LUNGHEZZA_GATHER = 40


def raffica_modello_2(x, y, bottone):
    riga = b"%d,%d,%d\r\n" % (x, y, bottone)
    return (riga * (LUNGHEZZA_GATHER // len(riga) + 1))[:LUNGHEZZA_GATHER]


class TavolettaPty:
    """A model 2 tablet on the master side of a pseudo-terminal."""

    def __init__(self):
        self.master, slave = os.openpty()
        self.dispositivo = os.ttyname(slave)
        os.close(slave)  # the library opens it, alone

    def mostra(self, x, y, bottone=0):
        os.write(self.master, raffica_modello_2(x, y, bottone))

    def chiudi(self):
        os.close(self.master)


class Ascolto:
    """What the callbacks heard, and a wait for it."""

    def __init__(self):
        self.eventi, self.errori = [], []
        self.cambio = threading.Condition()

    def aggiungi(self, lista, voce):
        with self.cambio:
            lista.append(voce)
            self.cambio.notify_all()

    def attendi(self, condizione, secondi=10):
        with self.cambio:
            return self.cambio.wait_for(condizione, secondi)


class SuUnaLinea(unittest.TestCase):
    PORTA = 4

    def setUp(self):
        self.pty = TavolettaPty()
        velmarin.map_port(self.PORTA, self.pty.dispositivo)
        self.tavoletta = velmarin.Tablet(model=2, port=self.PORTA, reset=1)
        self.tavoletta.connect()
        self.ascolto = Ascolto()

    def tearDown(self):
        self.tavoletta.close()
        velmarin.map_port(self.PORTA, None)
        self.pty.chiudi()

    def mostra_e_attendi(self, x, y, bottone, n):
        """Shows a state and waits until the callbacks have been called n times."""
        self.pty.mostra(x, y, bottone)
        self.assertTrue(self.ascolto.attendi(lambda: len(self.ascolto.eventi) >= n),
                        "nothing heard for %d,%d,%d" % (x, y, bottone))

    def test_moves_and_presses_reach_the_callbacks_with_ground_inside(self):
        a, t = self.ascolto, self.tavoletta
        t.fit_points([(0, 0, 500.0, 200.0), (1000, 0, 600.0, 200.0), (0, 1000, 500.0, 300.0)])
        self.assertTrue(t.listen(
            on_move=lambda x, y: a.aggiungi(a.eventi, ("move", x, y)),
            on_button=lambda b, x, y: a.aggiungi(a.eventi, ("button", b, x, y, t.button_function(b),
                                                            t.to_ground(x, y)))))
        gc.collect()  # the tablet alone holds the callables now
        self.mostra_e_attendi(100, 200, 0, 1)
        self.mostra_e_attendi(3000, 4000, 2, 2)
        self.mostra_e_attendi(3000, 4010, 0, 3)
        t.stop()
        self.assertEqual(a.eventi[0], ("move", 100, 200))
        tipo, b, x, y, funzione, (est, nord) = a.eventi[1]
        self.assertEqual((tipo, b, x, y, funzione), ("button", 2, 3000, 4000, 2))
        self.assertAlmostEqual(est, 500 + 0.1 * 3000, places=9)
        self.assertAlmostEqual(nord, 200 + 0.1 * 4000, places=9)
        self.assertEqual(a.eventi[2], ("move", 3000, 4010))

    def test_a_callback_that_raises_is_reported_and_the_reader_goes_on(self):
        a = self.ascolto

        def mossa(x, y):
            a.aggiungi(a.eventi, ("move", x, y))
            raise RuntimeError("bad move %d %d" % (x, y))

        def bottone(b, x, y):
            a.aggiungi(a.eventi, ("button", b, x, y))

        self.tavoletta.listen(on_move=mossa, on_button=bottone, on_error=lambda e: a.errori.append(str(e)))
        self.mostra_e_attendi(10, 20, 0, 1)
        self.mostra_e_attendi(10, 20, 1, 2)
        self.assertEqual(a.errori, ["bad move 10 20"])
        self.assertEqual(a.eventi[-1], ("button", 1, 10, 20))

        # With no on_error, or one that raises itself, the report goes to
        # standard error, and the reader goes on all the same.
        def errore_che_solleva(e):
            raise ValueError("on_error failed too")

        for n, (x, y, su_errore) in enumerate([(30, 40, None), (50, 60, errore_che_solleva)]):
            with self.subTest(on_error=su_errore):
                errori, sys.stderr = sys.stderr, io.StringIO()
                try:
                    self.tavoletta.listen(on_move=mossa, on_button=bottone, on_error=su_errore)
                    self.mostra_e_attendi(x, y, 0, 3 + 2 * n)
                    self.mostra_e_attendi(x, y, 3, 4 + 2 * n)
                    self.tavoletta.stop()
                    scritto = sys.stderr.getvalue()
                finally:
                    sys.stderr = errori
                self.assertIn("RuntimeError: bad move %d %d" % (x, y), scritto)
                self.assertEqual(a.eventi[-1], ("button", 3, x, y))

    def test_callbacks_that_are_not_callable_are_refused(self):
        for nome in ("on_move", "on_button", "on_error"):
            with self.subTest(nome), self.assertRaisesRegex(TypeError, "%s must be callable, not 5" % nome):
                self.tavoletta.listen(**{nome: 5})
        for nome in ("on_feature", "on_move", "on_change", "on_end", "on_error"):
            with self.subTest(nome), self.assertRaisesRegex(TypeError, "%s must be callable, not 5" % nome):
                self.tavoletta.digitize(**{nome: 5})

    def test_a_digitizing_session_makes_features_from_the_presses(self):
        self.tavoletta.close()
        a = self.ascolto
        mosse = []
        # East = x, North = y; buttons: 1 confirm, 2 polyline by end of entity, 4 cancel.
        with velmarin.Tablet(model=2, port=self.PORTA, reset=1, funzBott=[1, 6, 0, 8], limitiDefiniti=True,
                             xMin=0, yMin=0, xMax=1000, yMax=1000) as t:
            t.fit_points([(0, 0, 0, 0), (1000, 0, 1000, 0), (0, 1000, 0, 1000)])
            t.connect()
            with self.assertRaisesRegex(ValueError, "free_distance must be above 0"):
                t.digitize(free_distance=0)
            with self.assertRaisesRegex(TypeError, "closing_tolerance must be a finite number, not inf"):
                t.digitize(closing_tolerance=float("inf"))

            def premi(x, y, b, n):
                self.pty.mostra(x, y, 0)
                self.assertTrue(a.attendi(lambda: (x, y) in mosse), "no move to %d,%d" % (x, y))
                self.pty.mostra(x, y, b)
                self.assertTrue(a.attendi(lambda: len(a.eventi) >= n), "%d events, not %d" % (len(a.eventi), n))

            rifiuti = []

            def finito(f):
                a.aggiungi(a.eventi, ("finished", f.kind, f.vertices))
                try:
                    s.end()  # refused in here: the session goes on
                except RuntimeError as e:
                    rifiuti.append(str(e))

            with t.digitize(on_feature=finito,
                            on_change=lambda e, f: a.aggiungi(a.eventi, (e, f.kind, len(f.vertices))),
                            on_move=lambda e, n: a.aggiungi(mosse, (round(e), round(n))),
                            on_end=lambda: a.aggiungi(a.eventi, ("end",)), on_error=lambda e: a.aggiungi(a.errori, e),
                            closing_tolerance=2) as s:
                premi(10, 20, 1, 2)
                premi(0, 0, 2, 3)
                premi(100, 0, 1, 4)
                premi(100, 100, 1, 5)
                premi(50, 50, 1, 6)
                self.assertTrue(s.undo())
                premi(1, 0, 1, 8)
                premi(2, 2, 4, 9)
                self.assertFalse(s.undo())
                premi(3, 3, 4, 10)
        self.assertEqual(a.eventi[:2], [("started", "point", 1), ("finished", "point", [(10.0, 20.0)])])
        self.assertEqual(a.eventi[6], ("vertex_removed", "polyline", 3))
        self.assertEqual(a.eventi[8], ("finished", "polygon", [(0, 0), (100, 0), (100, 100), (0, 0)]))
        self.assertEqual(a.eventi[9], ("end",))
        self.assertEqual(a.errori, [])
        self.assertEqual(len(rifiuti), 2)
        self.assertRegex(rifiuti[0], "refused inside the session's callbacks")

    def test_close_runs_no_callback_during_the_reset(self):
        # Model 2's reset holds the close a second while the tablet reports:
        # only a callback already running may end during it.

        self.tavoletta.close()
        a = self.ascolto
        chiudendo = threading.Event()
        t = velmarin.Tablet(model=2, port=self.PORTA, reset=2)
        fine = threading.Event()

        def riporta():  # a move to a new place each time
            x = 0
            while not fine.is_set():
                x += 1
                self.pty.mostra(x, 8, 0)
                fine.wait(0.02)
        flusso = threading.Thread(target=riporta)
        try:
            t.connect()
            t.listen(on_move=lambda x, y: a.aggiungi(a.eventi, (chiudendo.is_set(), t.to_ground(x, y))),
                     on_error=lambda e: a.aggiungi(a.errori, e))
            flusso.start()
            self.assertTrue(a.attendi(lambda: len(a.eventi) >= 3))
            chiudendo.set()
        finally:
            t.close()
            fine.set()
            if flusso.is_alive():
                flusso.join()
        self.assertEqual(a.errori, [])
        self.assertLessEqual(sum(1 for durante, _ in a.eventi if durante), 1)


class SenzaLinea(unittest.TestCase):
    def test_a_missing_port_is_refused_with_its_name(self):
        velmarin.map_port(3, "/nonexistent/tty-velmarin")
        try:
            with velmarin.Tablet(model=5, port=3) as t:
                with self.assertRaisesRegex(OSError, r"COM3 \(/nonexistent/tty-velmarin\): cannot be opened: No such file") as e:
                    t.connect()
                self.assertIsInstance(e.exception, velmarin.PortError)
                self.assertEqual(e.exception.errno, 2)
            with self.assertRaisesRegex(velmarin.PortError, r"COM3 \(/nonexistent/tty-velmarin\): cannot be opened") as e:
                velmarin.check_port(3)
            self.assertEqual(e.exception.errno, 2)
        finally:
            velmarin.map_port(3, None)

    def test_bad_arguments_are_refused_clearly(self):
        casi = [
            (ValueError, "model must be 1 to 8", lambda: velmarin.Tablet(model=9)),
            (TypeError, "port must be an integer, not True", lambda: velmarin.check_port(True)),
            (TypeError, "unknown tablet setting 'colore'", lambda: velmarin.Tablet(model=1, colore=2)),
            (ValueError, "velocita must be", lambda: velmarin.Tablet(model=1, velocita=99999)),
            (ValueError, "port must be 1 to 255", lambda: velmarin.map_port(0, "/dev/null")),
            (ValueError, "port must be 1 to 255", lambda: velmarin.check_port(256)),
            (ValueError, "port must be 1 to 255, not 256", lambda: velmarin.Tablet(model=1, port=256)),
            (ValueError, "code must be -2147483648 to 2147483647", lambda: velmarin.function_name(2**31)),
            (ValueError, "funzBott holds 16 codes, not 17", lambda: velmarin.Tablet(model=1, funzBott=[0] * 17)),
            (ValueError, r"point 1 must be \(x, y, east, north\), not 3 values",
             lambda: velmarin.Tablet(model=1).fit_points([(0, 0, 1, 1), (1, 0, 2), (0, 1, 1, 2)])),
            (ValueError, r"fit_points takes 3 to 21 points \(x, y, east, north\), not 22",
             lambda: velmarin.Tablet(model=1).fit_points([(k, k * k, 1, 1) for k in range(22)])),
            (ValueError, "3 to 21 points", lambda: velmarin.Tablet(model=1).fit_points([(0, 0, 1, 1), (10, 0, 2, 2)])),
        ]
        for eccezione, testo, chiamata in casi:
            with self.subTest(testo):
                with self.assertRaisesRegex(eccezione, testo):
                    chiamata()
        with velmarin.Tablet(model=8, port=255) as t:  # the last of each range
            self.assertEqual((t.setup.tipo, t.port), (8, 255))

    def test_names_settings_and_version(self):
        self.assertEqual((velmarin.model_name(2), velmarin.model_name(9)), ("SummaGraph.MM ASCII", None))
        self.assertEqual((velmarin.function_name(8), velmarin.function_name(3)), ("Annulla - Fine funzione", None))
        with velmarin.Tablet(5, parita="O") as t:  # a model's settings, as a Tablet of it holds them
            self.assertEqual((velmarin.model_settings(5)["velocita"], t.setup.parita), (t.setup.velocita, "O"))
        self.assertEqual(velmarin.Tablet(model=1).setup.parita, "O")
        self.assertFalse(velmarin.Tablet(model=1, limitiDefiniti=0).setup.limitiDefiniti)
        self.assertNotEqual(velmarin.model_settings(1), velmarin.model_settings(5))
        self.assertEqual(velmarin.__version__, velmarin.version())
        self.assertRegex(velmarin.version(), r"^\d+\.\d+\.\d+$")

    def test_fit_points_then_ground(self):
        with velmarin.Tablet(model=5, limitiDefiniti=True, xMin=0, yMin=0, xMax=1000, yMax=1000) as t:
            self.assertIsNone(t.to_ground(10, 10))
            self.assertFalse(t.is_calibrated)
            # Four points no plane passes through: the least squares give
            # East 499 + 0.102 x + 0.002 y, North 200 + 0.1 y.
            t.fit_points([(0, 0, 500, 200), (1000, 0, 600, 200), (0, 1000, 500, 300), (1000, 1000, 604, 300)])
            self.assertTrue(t.is_calibrated)
            # The maths is the library's (tested there); here, East and North
            # each in its place.
            prima = t.to_ground(250, 750)
            self.assertAlmostEqual(prima[0], 499 + 0.102 * 250 + 0.002 * 750, places=8)
            self.assertAlmostEqual(prima[1], 200 + 0.1 * 750, places=8)
            # The report's figures are the library's (tested there); here, their Python form.
            r = t.fit_report()
            self.assertEqual((r.kind, r.warnings, len(r.worst)), ("sparse", set(), 2))
            # Residuals of +-1 m East at each corner: RMS 1 over four points,
            # a deviation of sqrt(4 / 2) over the two redundant figures.
            self.assertAlmostEqual(r.rms, 1.0, places=8)
            self.assertAlmostEqual(r.std_dev, 2 ** 0.5, places=8)
            self.assertEqual([(p.x, p.y, p.east, p.north) for p in r.points][3], (1000, 1000, 604, 300))
            # Given minus fitted: 604 - 603; left out, the plane of the other three gives 600.
            p = r.points[3]
            self.assertEqual([round(v, 8) for v in (p.residual_east, p.residual_north, p.loo_east, p.loo_north)], [1, 0, 4, 0])
            with self.assertRaisesRegex(velmarin.VelmarinError, "one line"):
                t.fit_points([(0, 0, 1, 1), (10, 10, 2, 2), (20, 20, 3, 3)])
            self.assertEqual(t.to_ground(250, 750), prima)
            t.forget_calibration()
            self.assertEqual((t.is_calibrated, t.to_ground(250, 750), t.fit_report()), (False, None, None))

    def test_each_warning_by_its_name(self):
        def terreno(punti, fuori=None):
            return [(x, y, 1500000 + 0.05 * x + 5 * (k == fuori), 5000000 + 0.05 * y) for k, (x, y) in enumerate(punti)]
        sparsi = [(1000, 1000), (39000, 1000), (39000, 29000), (1000, 29000),
                  (20000, 15000), (10000, 22000), (30000, 8000), (25000, 26000)]
        casi = [({"clustered"}, terreno([(1000, 1000), (9000, 1000), (9000, 7000), (1000, 7000)])),
                ({"collinear"}, terreno([(1000, 1000), (13000, 10100), (26000, 20000), (39000, 29500)])),
                ({"blunder"}, terreno(sparsi, fuori=5)),
                ({"no_redundancy"}, terreno(sparsi[:3]))]
        with velmarin.Tablet(model=5, limitiDefiniti=True, xMin=0, yMin=0, xMax=40000, yMax=30000) as t:
            for avvisi, punti in casi:
                t.fit_points(punti)
                self.assertEqual(t.fit_report().warnings, avvisi)
            r = t.fit_report()
            self.assertEqual((r.std_dev, r.predicted_worst), (None, None))
            t.fit_grid(2, 2, 0, 0, 100, 100, [(1000 * i + 300 * (i == j == 1), 1000 * j) for j in range(3) for i in range(3)])
            self.assertEqual(t.fit_report().warnings, {"node_out_of_place"})


if __name__ == "__main__":
    unittest.main()
