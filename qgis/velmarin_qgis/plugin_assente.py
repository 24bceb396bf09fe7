"""What QGIS loads when the velmarin module or its native library cannot be
found: it says so once, and why, instead of leaving QGIS with a traceback."""

from qgis.core import Qgis


class PluginAssente:
    def __init__(self, iface, errore):
        self.iface, self.errore = iface, errore

    def initGui(self):
        self.iface.messageBar().pushMessage(
            "velmarin tablet", "The velmarin library could not be loaded (%s). Install it, or set "
            "VELMARIN_LIBRARY to the library's file." % self.errore, Qgis.Critical, 0)

    def unload(self):
        pass
