#!/bin/bash
# The Windows sample host under Wine, in a virtual X display, driven through
# window messages by guida_esempio on a simulated tablet on COM1
# (sim_com1.sh). The sample host keeps its record in the test's prefix, under
# the user's Application Data, and a run starts without one.
#
# usage: prova_esempio.sh SIM_COMANDATA GUIDA.exe PREFIX ESEGUI_WINE LOADER
set -u
# Wine makes windows only on an X server.
if [ -z "${VELMARIN_XVFB:-}" ]; then
    VELMARIN_XVFB=1 exec xvfb-run -a bash "$0" "$@"
fi
sim=$1 guida=$(realpath "$2") prefisso=$(realpath -m "$3") esegui_wine=$4 loader=$5
. "$(dirname "$0")/sim_com1.sh"
avvia_sim
mappa_com1
rm -rf "$prefisso"/drive_c/users/*/AppData/Roaming/velmarin
"$loader" "$guida" <&3 >&4
