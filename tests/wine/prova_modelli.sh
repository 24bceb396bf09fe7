#!/bin/bash
# The eight models end to end, on Linux and under Wine, compared: each run
# lets percorso_modelli talk to a fresh simulated tablet (sim_com1.sh). Under
# Wine it runs twice: on the port as Wine gives it, and on a port that always
# reports its queue empty and its event mask blank (--coda-muta). The
# transcripts (what reached the tablet, what the host heard, the boxes) must
# all be the same, and each run must pass its own checks.
#
# usage: prova_modelli.sh SIM_COMANDATA PERCORSO_LINUX PERCORSO_WINDOWS.exe PREFIX ESEGUI_WINE LOADER
set -u
sim=$1 linux=$2 windows=$(realpath "$3") prefisso=$(realpath -m "$4") esegui_wine=$5 loader=$6
. "$(dirname "$0")/sim_com1.sh"
cd "$temp" || exit 1
fallite=0

# corsa SYSTEM TRANSCRIPT [OPTION]: on Linux the program maps COM1 itself.
corsa() {
    avvia_sim
    if [ "$1" = linux ]; then
        "$linux" "$2" "$dispositivo" <&3 >&4 || { echo "FAIL the run on Linux"; fallite=1; }
    else
        mappa_com1
        "$loader" "$windows" ${3:-} "$2" <&3 >&4 || { echo "FAIL the run under Wine ${3:-}"; fallite=1; }
    fi
    ferma_sim
}
corsa linux linux.txt
corsa wine windows.txt
corsa wine muta.txt --coda-muta

echo "--- Linux"; cat linux.txt
for t in windows.txt muta.txt; do
    diff -u linux.txt "$t" && echo "--- $t: the same" || { echo "FAIL $t differs"; fallite=1; }
done
exit "$fallite"
