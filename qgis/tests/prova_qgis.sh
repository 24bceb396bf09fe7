#!/bin/sh
# The plugin inside Debian's QGIS under Xvfb, on a profile of its own:
# dentro_qgis.py reports from inside, this checks it. Skipped (77) without
# qgis or xvfb-run. Arguments: sources, library, velmarin-sim, screenshots.

SORGENTI=$1
command -v qgis >/dev/null 2>&1 || { echo "qgis is missing: skipped"; exit 77; }
command -v xvfb-run >/dev/null 2>&1 || { echo "xvfb-run is missing: skipped"; exit 77; }
temp=$(mktemp -d)
trap 'rm -rf "$temp"' EXIT
mkdir -p "$4"
export VELMARIN_LIBRARY="$2" VELMARIN_SIM="$3" VELMARIN_IMMAGINI="$4" VELMARIN_SORGENTI="$SORGENTI" \
       VELMARIN_ESITO="$temp/esito.json" HOME="$temp" XDG_CONFIG_HOME="$temp/config" XDG_DATA_HOME="$temp/data" \
       PYTHONDONTWRITEBYTECODE=1
unset QT_QPA_PLATFORM
timeout 240 xvfb-run -a -s "-screen 0 1280x800x24" qgis --noplugins --nologo --profiles-path "$temp/profili" \
    --code "$SORGENTI/qgis/tests/dentro_qgis.py" >"$temp/qgis.log" 2>&1
[ -f "$temp/esito.json" ] || { echo "QGIS ended without a report:"; tail -40 "$temp/qgis.log"; exit 1; }
/usr/bin/python3 - "$temp/esito.json" <<'VERIFICA'
import json, sys
esito = json.load(open(sys.argv[1]))
if "error" in esito:
    sys.exit("inside QGIS:\n" + esito["error"])
attese = {  # the toolbar's and the menu's entries are the headless tests'
    "toolbar": True,
    "calibrated": True,
    "features": [1, 1, 1],
    "kinds": [1, 2, 3],  # QgsWkbTypes Point, LineString, Polygon
}
sbagliate = {k: (esito.get(k), v) for k, v in attese.items() if esito.get(k) != v}
if not 0 < esito.get("rms", 0) < 0.05:
    sbagliate["rms"] = esito.get("rms")
if sbagliate:
    sys.exit("found, expected: %r" % sbagliate)
print("inside QGIS:", esito["status"])
VERIFICA
