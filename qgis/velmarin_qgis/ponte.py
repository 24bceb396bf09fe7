"""The crossing from the library's reader thread to QGIS's main thread.

The tablet's callbacks run on the reader thread, where nothing of QGIS may
be touched: they only emit these signals, and every receiver is connected
with a queued connection, so its slot runs in the main thread's event loop.
`sul_principale` guards each slot: a slot reached on another thread does
nothing and is counted, so a wrong connection shows at once in the tests."""

import functools

from qgis.PyQt.QtCore import QCoreApplication, QObject, Qt, QThread, pyqtSignal


class Ponte(QObject):
    pressione = pyqtSignal(int, int, int)   # button, x, y
    elemento = pyqtSignal(object)           # a finished velmarin.Feature
    cambio = pyqtSignal(str, object)        # 'started', 'vertex_added', 'vertex_removed'; the Feature
    puck = pyqtSignal(float, float)         # East, North
    fine = pyqtSignal()                     # the session ended from the tablet
    errore = pyqtSignal(str)                # a callback's own failure

    fuori_thread = 0  # slots reached off the main thread, and not run

    def collega(self, segnale, slot):
        segnale.connect(slot, Qt.QueuedConnection)

    def scollega(self, segnale, slot):
        try:
            segnale.disconnect(slot)
        except TypeError:  # was not connected
            pass

    def su_errore(self, eccezione):
        self.errore.emit("%s: %s" % (type(eccezione).__name__, eccezione))


def sul_principale(slot):
    @functools.wraps(slot)
    def guardato(*argomenti):
        if QThread.currentThread() is not QCoreApplication.instance().thread():
            Ponte.fuori_thread += 1
            return None
        return slot(*argomenti)
    return guardato
