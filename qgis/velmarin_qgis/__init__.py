"""velmarin for QGIS: a digitizing tablet on a serial line, set up, calibrated
on the map canvas and digitizing into the project's layers.

The zip that QGIS installs carries the velmarin Python module in lib/ (and
the native library beside it, when the zip was made with one); that copy
comes first, so the plugin always runs the module it was made with. In the
source tree there is no lib/, and the module comes from Python's path."""

import os
import sys

_LIB = os.path.join(os.path.dirname(__file__), "lib")
if os.path.isdir(_LIB) and _LIB not in sys.path:
    sys.path.insert(0, _LIB)


def classFactory(iface):  # QGIS's name
    try:
        from .plugin import PluginVelmarin
    except (ImportError, OSError) as errore:  # no module, or no native library
        from .plugin_assente import PluginAssente
        return PluginAssente(iface, errore)
    return PluginVelmarin(iface)
