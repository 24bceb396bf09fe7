#!/bin/sh
# Digitizing a map as a person does it, in tmux at 80x24, on a velmarin-sim
# fed stroke by stroke: four points calibrate, four features are digitized,
# and the host is killed with SIGKILL in the middle of a fifth. Read back
# with GDAL, the GeoPackage and the GeoJSON file hold the four, exactly, in
# the CRS asked for. Skipped (77) without tmux, GDAL's programs or a host
# built with GDAL.
HOST=$1
SIM=$2
. "$(dirname "$0")/comune.sh"
prepara_tmux velmarin-gis
command -v ogrinfo >/dev/null 2>&1 || { echo "ogrinfo (gdal-bin) is missing: skipped"; exit 77; }
"$HOST" digitize --out "$temp/prova.gpkg" </dev/null 2>&1 | grep -q "not available" && { echo "built without GDAL: skipped"; exit 77; }

# Buttons: 1 Conferma, 2 Polilinea Fine Ent., 3 Linea Fine Ent., 4 Annulla,
# 5 Polilinea Dis. Lib.; a sheet of 40000 counts.
mkdir -p "$XDG_CONFIG_HOME/velmarin"
cat >"$XDG_CONFIG_HOME/velmarin/setup" <<'IMPOSTAZIONI'
version 1
model 5
port 1
baud 9600
parity E
data_bits 7
stop_bits 2
reset 2
resolution 3
buttons 16
functions 1 6 4 8 5 0 0 0 0 0 0 0 0 0 0 0
limits 0 0 40000 40000
IMPOSTAZIONI

mkfifo "$temp/tratti"
exec 3<>"$temp/tratti"  # held open, so the simulator never sees the end
avvia_sim --step 20 --file "$temp/tratti" || exit 1

# The pointer at counts ($1, $2) for two steps: a gather of the library may
# straddle two states and show only the second, so one step can go unseen.
sposta() { printf '%s\n' "$1 $2 0" "$1 $2 0" >&3; }
# A press of button $3 at counts ($1, $2), held three steps.
premi() {
    sposta "$1" "$2"
    printf '%s\n' "$1 $2 $3" "$1 $2 $3" "$1 $2 $3" >&3
    sposta "$1" "$2"
}
# The features of the file $1, one a line, coordinates to 3 decimals.
elementi() {
    ogrinfo -ro -al -q "$1" 2>/dev/null | grep -E '^  (POINT|LINESTRING)' | tr '(),' '   ' |
        awk '{ s = $1; for (i = 2; i <= NF; i++) s = s " " sprintf("%.3f", $i); print s }'
}
quanti() { ogrinfo -ro -al -so "$1" 2>/dev/null | sed -n 's/^Feature Count: //p'; }

# East = 1500000 + 0.05 x, North = 5000000 + 0.05 y.
cat >"$temp/attesi" <<'ATTESI'
POINT 1501000.000 5001000.000
LINESTRING 1500200.000 5000200.000 1500400.000 5000200.000
LINESTRING 1500200.000 5000400.000 1500400.000 5000400.000 1500400.000 5000600.000
LINESTRING 1500500.000 5000500.000 1500500.000 5000510.000 1500500.000 5000520.000
ATTESI

for formato in gpkg geojson; do
    uscita="$temp/carta.$formato"
    tmux kill-server 2>/dev/null
    tmux new-session -d -s "$sessione" -x 80 -y 24 "echo \$\$ >'$temp/host.pid'; exec '$HOST' --device '$dispositivo' \
        --model 5 calibrate points digitize --out '$uscita' --crs EPSG:3003 --stream-step 10 2>'$temp/host.err'"
    verifica "$formato: the set-up file is read" attendi "set-up read from $XDG_CONFIG_HOME/velmarin/setup"
    for punto in "4000 4000 1500200 5000200" "36000 4000 1501800 5000200" "4000 36000 1500200 5001800" \
                 "36000 36000 1501800 5001800"; do
        set -- $punto
        attendi "Coord. Est (Y)" || break
        tmux send-keys -t "$sessione" "$3" Tab "$4" Enter
        attendi "Digitalizza il Punto" || break
        premi "$1" "$2" 1
        attendi "Coord. Est (Y)" || break
    done
    tmux send-keys -t "$sessione" Escape
    verifica "$formato: the calibration is reported" attendi "calibration report: 4 sparse points"
    verifica "$formato: with exact residuals" attendi "RMS [0-9.e-]* = sqrt"
    verifica "$formato: the report is written beside the file" contiene "$temp/carta.calibration.json" '"calibration": "sparse points"'
    verifica "$formato: digitizing starts" attendi "digitizing into $uscita"

    premi 20000 20000 1
    premi 4000 4000 3
    premi 8000 4000 1
    premi 4000 8000 2
    premi 8000 8000 1
    premi 8000 12000 1
    premi 8000 12000 4
    premi 10000 10000 5
    # Free drawing: each position held four steps, so that a busy host that
    # misses a report or two still sees it.
    for y in 10100 10200 10300 10400; do sposta 10000 $y; sposta 10000 $y; done
    premi 10000 10400 4
    verifica "$formato: four features are shown" attendi "feature 4: polyline, 3 vertices"
    premi 20000 4000 2
    premi 24000 4000 1
    verifica "$formato: a fifth is open" attendi "polyline open at 1501000.000 5000200.000"
    kill -9 "$(cat "$temp/host.pid")"

    verifica "$formato: after SIGKILL the file holds the four ended features" test "$(quanti "$uscita")" = 4
    elementi "$uscita" >"$temp/letti"
    verifica "$formato: exactly where they were digitized" diff "$temp/attesi" "$temp/letti"
    verifica "$formato: in the CRS asked for" sh -c "ogrinfo -ro -al -so '$uscita' | grep -q 'ID\\[\"EPSG\",3003\\]'"
    verifica "$formato: each feature says what made it" sh -c \
        "ogrinfo -ro -al -q '$uscita' | grep -q 'function (String) = funzPolilineaDisLib'"
    rm -f "$temp/carta.calibration.json"
done
fine
