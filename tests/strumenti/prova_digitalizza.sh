#!/bin/sh
# Digitizing a map as a person does, in tmux at 80x24: four points calibrate
# (Enter once too often, Escape taken back), five features, then SIGKILL in
# a sixth; each format, read back with GDAL, holds the five with the log's
# calibration id. A full disk stops a session.
# Skipped (77) without tmux, GDAL's programs or a host built with GDAL.

HOST=$1
SIM=$2
. "$(dirname "$0")/comune.sh"
prepara_tmux velmarin-gis
base=$sessione
avvii=0
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
# The features of GDAL's listing on standard input, one a line, to 3 decimals.
geometrie() {
    grep -E '^  (POINT|LINESTRING|POLYGON)' | tr '(),' '   ' |
        awk '{ s = $1; for (i = 2; i <= NF; i++) s = s " " sprintf("%.3f", $i); print s }'
}
# The files of the output $1: one, or one per geometry beside it.
file_di() {
    case $1 in
    *.gpkg) echo "$1" ;;
    *) b=${1%.*} e=${1##*.}; echo "$1 ${b}_lines.$e ${b}_polygons.$e" ;;
    esac
}
elenco() { for f in $(file_di "$1"); do ogrinfo -ro -al -q "$f" 2>/dev/null; done; }
sommario() { for f in $(file_di "$1"); do ogrinfo -ro -al -so "$f" 2>/dev/null; done; }
quanti() { sommario "$1" | sed -n 's/^Feature Count: //p' | awk '{ n += $1 } END { print n + 0 }'; }
avvia_host() {  # avvia_host OUTPUT OPTIONS...: the host in tmux, its status at the end on the screen
    uscita=$1
    shift
    avvii=$((avvii + 1))
    apri_sessione "$base-$avvii" "trap '' XFSZ; '$HOST' --device '$dispositivo' --model 5 \
        calibrate points digitize --out '$uscita' --crs EPSG:3003 --stream-step 10 $* 2>'$temp/host.err'; \
        echo EXIT=\$?; sleep 60"
}
# The host of this test's tmux pane, a child of the pane's shell: never a
# host that another test runs at the same time.
pid_host() { pgrep -n -P "$(tmux display-message -p -t "$sessione" '#{pane_pid}')" -f "^$HOST --device"; }
# Four points, typed and pressed; the first with Enter pressed twice, the
# second given up with Escape and taken back with Ctrl-D, the third asked
# from Annulla.
calibra() {
    attendi "Coord. Est (Y)"
    tmux send-keys -t "$sessione" 1500200 Tab 5000200 Enter Enter
    attendi "Digitalizza il Punto"
    premi 4000 4000 1
    attendi "Point 2: its ground East and North"
    tmux send-keys -t "$sessione" Escape
    attendi "Give up the calibration? The 1 point taken will be lost."
    tmux send-keys -t "$sessione" C-d  # end of input answers as n does
    for punto in "36000 4000 1501800 5000200" "4000 36000 1500200 5001800" "36000 36000 1501800 5001800"; do
        set -- $punto
        attendi "Coord. Est (Y)"
        if [ "$1 $2" = "4000 36000" ]; then  # Annulla highlighted and Enter asks too
            attendi "Point 3: its ground East and North"  # and then the entry, not the wait whose Annulla gives up
            attendi "Type, Backspace: erase"
            tmux send-keys -t "$sessione" Tab Tab Tab Enter
            attendi "The 2 points taken will be lost."
            tmux send-keys -t "$sessione" N Tab  # Shift held: still no
        fi
        tmux send-keys -t "$sessione" "$3" Tab "$4" Enter
        attendi "Digitalizza il Punto"
        premi "$1" "$2" 1
    done
    attendi "Point 5: its ground East and North"
    tmux send-keys -t "$sessione" Escape
}

# East = 1500000 + 0.05 x, North = 5000000 + 0.05 y.
cat >"$temp/attesi" <<'ATTESI'
POINT 1501000.000 5001000.000
LINESTRING 1500200.000 5000200.000 1500400.000 5000200.000
LINESTRING 1500200.000 5000400.000 1500400.000 5000400.000 1500400.000 5000600.000
LINESTRING 1500500.000 5000500.000 1500500.000 5000510.000 1500500.000 5000520.000
POLYGON 1501500.000 5001500.000 1501500.000 5001700.000 1501700.000 5001700.000 1501500.000 5001500.000
ATTESI

registro="$temp/carta.calibrations.jsonl"
n=0
for formato in gpkg geojson shp; do
    n=$((n + 1))
    uscita="$temp/carta.$formato"
    avvia_host "$uscita"
    verifica "$formato: the set-up file is read" attendi "set-up read from $XDG_CONFIG_HOME/velmarin/setup"
    calibra
    verifica "$formato: the calibration is reported with its counts" attendi "4 points taken, all 4 used"
    verifica "$formato: and kept in the log, after those before it" test "$(wc -l <"$registro")" -eq "$n"
    id=$(tail -n1 "$registro" | sed 's/^{"id": "\([^"]*\)".*/\1/')
    verifica "$formato: under the id the screen gives" attendi "calibration id $id"
    verifica "$formato: digitizing starts" attendi "digitizing into $uscita"

    giorno=$(date -u +%F)
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
    # Clockwise, as Shapefile keeps an outer ring.
    premi 30000 30000 2
    premi 30000 34000 1
    premi 34000 34000 1
    premi 30000 30000 1
    premi 30000 30000 4
    verifica "$formato: five features are shown" attendi "feature 5: polygon, 4 vertices"
    premi 20000 4000 6
    verifica "$formato: a button without a function is told" attendi "note: button 6 has no function"
    premi 20000 4000 3
    premi 20000 4000 4
    verifica "$formato: a line of one vertex is dropped, and told" attendi "note: a line of one vertex is dropped"
    premi 20000 4000 2
    premi 24000 4000 1
    verifica "$formato: a sixth is open" attendi "polyline open at 1501000.000 5000200.000"
    kill -9 "$(pid_host)"

    verifica "$formato: after SIGKILL the files hold the five ended features" test "$(quanti "$uscita")" = 5
    elenco "$uscita" | geometrie >"$temp/letti"
    verifica "$formato: exactly where they were digitized, a layer per geometry" diff "$temp/attesi" "$temp/letti"
    # The fields' types and values in each format are UscitaGisTest's; here,
    # the calibration the host was using.
    elenco "$uscita" >"$temp/campi"
    verifica "$formato: each feature names its calibration" test "$(grep 'calib_id (String)' "$temp/campi" | sort -u)" = \
        "  calib_id (String) = $id"
    giorni=$(sed -n 's/^  time ([A-Za-z]*) = //p' "$temp/campi" | cut -c1-10 | tr / - | sort -u | tr '\n' ' ')
    verifica "$formato: and the day it was digitized ($giorni)" test "$giorni" = "$giorno " -o "$giorni" = "$(date -u +%F) "
done

# A disk that fills up, played by a file size limit put on the running host.
uscita="$temp/pieno.gpkg"
avvia_host "$uscita"
calibra
verifica "full disk: digitizing starts" attendi "digitizing into $uscita"
prlimit --pid "$(pid_host)" --fsize="$(stat -c %s "$uscita")"
for k in $(seq 300); do
    premi $((k * 100)) 20000 1
    schermo | grep -q "^-- stopped" && break
done
verifica "full disk: the status says the job was not done" attendi "EXIT=1"
verifica "full disk: the session stops, naming the file" contiene "$temp/host.err" "digitizing stopped: cannot .* $uscita"
verifica "full disk: and says what is not written" contiene "$temp/host.err" "not written: 1 feature"
annunciati=$(schermo | sed -n 's/^feature \([0-9]*\): point.*/\1/p' | tail -n1)
nel_file=$(quanti "$uscita")
verifica "full disk: the file holds every feature announced ($annunciati, read $nel_file)" \
    test "$nel_file" = "${annunciati:-none}"

fine
