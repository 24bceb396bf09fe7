#!/bin/bash
# The eight models end to end, on Linux and under Wine, compared. Each run
# puts a fresh simulated tablet (sim_comandata) on a pseudo-terminal and lets
# the program percorso_modelli talk to it: on Linux the program maps COM1 to
# the terminal itself, under Wine the prefix's registry maps COM1 to it
# (HKLM\Software\Wine\Ports) and the prefix restarts to see it. Under Wine
# it runs twice: on the port as Wine gives it, and on a port that always
# reports its queue empty and its event mask blank (--coda-muta). The
# transcripts (what reached the tablet, what the host heard, the boxes) must
# all be the same, and each run must pass its own checks.
#
# The prefix is this test's own, since mapping COM1 restarts it; it is made
# and run through the build's Wine runner (cmake/esegui_wine.sh).
#
# usage: prova_modelli.sh SIM_COMANDATA PERCORSO_LINUX PERCORSO_WINDOWS.exe PREFIX ESEGUI_WINE LOADER
set -u
if [ ! -x "$1" ] || [ ! -x "$2" ]; then
    echo "no Linux build with the simulated tablet at $(dirname "$1"): skipped"
    exit 77
fi
sim=$(realpath "$1") linux=$(realpath "$2") windows=$(realpath "$3")
prefisso=$(realpath -m "$4") esegui_wine=$5 loader=$6
. "$(dirname "$0")/sim_com1.sh"

cd "$temp" || exit 1
fallite=0

avvia_sim
"$linux" linux.txt "$dispositivo" <&3 >&4 || { echo "FAIL the run on Linux"; fallite=1; }
ferma_sim

# Runs the Windows program on a fresh tablet: corsa_wine TRANSCRIPT [OPTION]
corsa_wine() {
    avvia_sim
    mappa_com1
    "$loader" "$windows" ${2:-} "$1" <&3 >&4 2>"$1.err" || { echo "FAIL the run under Wine ${2:-}"; fallite=1; }
    ferma_sim
    grep '^FAIL' "$1.err"
}
corsa_wine windows.txt
corsa_wine muta.txt --coda-muta

echo "--- Linux"; cat linux.txt
for t in windows.txt muta.txt; do
    if diff -u linux.txt "$t"; then
        echo "--- $t: the same"
    else
        echo "FAIL $t differs"; fallite=1
    fi
done
exit "$fallite"
