#!/usr/bin/python3
"""Makes the zip that QGIS's "Install from ZIP" takes: the plugin, with the
velmarin Python module inside it (velmarin_qgis/lib/velmarin) and, when
--library names one, the native library beside that module. Without it the
module finds the library where the system installed it, or through
VELMARIN_LIBRARY. On Windows QGIS is 64-bit: give the x86_64 velmarin.dll.

    /usr/bin/python3 qgis/crea_zip.py velmarin_qgis.zip --library build/default/libvelmarin.so
"""

import argparse
import os
import sys
import zipfile

RADICE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def file_di(cartella):
    for base, cartelle, nomi in os.walk(cartella):
        cartelle[:] = sorted(c for c in cartelle if c != "__pycache__")
        for nome in sorted(nomi):
            if not nome.endswith(".pyc"):
                yield os.path.join(base, nome)


def main():
    argomenti = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    argomenti.add_argument("zip", help="the zip to write")
    argomenti.add_argument("--library", help="the native library to carry (libvelmarin.so or velmarin.dll)")
    a = argomenti.parse_args()
    if a.library and not os.path.isfile(a.library):
        sys.exit("crea_zip: no library at %s" % a.library)
    contenuto = [(p, os.path.join("velmarin_qgis", os.path.relpath(p, os.path.join(RADICE, "qgis", "velmarin_qgis"))))
                 for p in file_di(os.path.join(RADICE, "qgis", "velmarin_qgis"))]
    contenuto += [(p, os.path.join("velmarin_qgis", "lib", "velmarin", os.path.relpath(p, os.path.join(RADICE, "python", "velmarin"))))
                  for p in file_di(os.path.join(RADICE, "python", "velmarin")) if p.endswith(".py")]
    if a.library:
        nome = "velmarin.dll" if a.library.endswith(".dll") else "libvelmarin.so"
        contenuto.append((a.library, os.path.join("velmarin_qgis", "lib", "velmarin", nome)))
    with zipfile.ZipFile(a.zip, "w", zipfile.ZIP_DEFLATED) as z:
        for sorgente, nome in contenuto:
            z.write(sorgente, nome)
    print("%s: %d files" % (a.zip, len(contenuto)))


if __name__ == "__main__":
    main()
