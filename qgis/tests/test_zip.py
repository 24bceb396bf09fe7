"""The zip that QGIS installs, unpacked into a plugin folder and loaded as
QGIS loads it, with nothing of the source tree on Python's path: with the
native library inside it runs on that; without, the plugin says what is
missing instead of failing."""

import os
import subprocess
import sys
import tempfile
import unittest
import zipfile

SORGENTI = os.environ["VELMARIN_SORGENTI"]
QUI = os.path.dirname(os.path.abspath(__file__))

CARICA = r"""
import os, sys
from ambiente import InterfacciaFinta
import velmarin_qgis
plugin = velmarin_qgis.classFactory(InterfacciaFinta())
plugin.initGui()
print(type(plugin).__name__)
try:
    import velmarin
    print(os.path.dirname(velmarin.__file__))
    print(velmarin._libreria.lib._name)
except ImportError:  # the module is there, its library not
    print("\n")
print(plugin.iface.barra.messaggi)
plugin.unload()
"""


class ZipDelPlugin(unittest.TestCase):
    def carica(self, con_libreria):
        cartella = tempfile.mkdtemp(prefix="velmarin-zip-")
        archivio = os.path.join(cartella, "velmarin_qgis.zip")
        comando = [sys.executable, os.path.join(SORGENTI, "qgis", "crea_zip.py"), archivio]
        if con_libreria:
            comando += ["--library", os.environ["VELMARIN_LIBRARY"]]
        subprocess.run(comando, check=True, stdout=subprocess.DEVNULL)
        estensioni = os.path.join(cartella, "plugins")
        with zipfile.ZipFile(archivio) as z:
            z.extractall(estensioni)
        ambiente = {k: v for k, v in os.environ.items() if k not in ("PYTHONPATH", "VELMARIN_LIBRARY")}
        ambiente["PYTHONPATH"] = os.pathsep.join([estensioni, QUI])
        uscita = subprocess.run([sys.executable, "-c", CARICA], env=ambiente, cwd=cartella, check=True,
                                capture_output=True, text=True).stdout.splitlines()
        return estensioni, uscita[-4:]

    def test_with_the_library_inside_the_plugin_runs_on_it(self):
        estensioni, (tipo, modulo, libreria, messaggi) = self.carica(True)
        dentro = os.path.join(estensioni, "velmarin_qgis", "lib", "velmarin")
        self.assertEqual((tipo, modulo, os.path.dirname(libreria), messaggi), ("PluginVelmarin", dentro, dentro, "[]"))

    def test_without_a_library_the_plugin_says_so(self):
        _, (tipo, _, _, messaggi) = self.carica(False)
        self.assertEqual(tipo, "PluginAssente")
        self.assertIn("VELMARIN_LIBRARY", messaggi)


if __name__ == "__main__":
    unittest.main()
