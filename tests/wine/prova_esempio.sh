#!/bin/bash
# The Windows sample host under Wine, in a virtual X display, driven through
# window messages by guida_esempio on a simulated tablet (sim_comandata, a
# Linux program) on a pseudo-terminal, which the prefix's registry maps to
# COM1 (HKLM\Software\Wine\Ports). The prefix is this test's own, since
# mapping COM1 restarts it; the sample host keeps its record there, under
# the user's Application Data, and a run starts without one.
#
# usage: prova_esempio.sh SIM_COMANDATA GUIDA.exe PREFIX ESEGUI_WINE LOADER
set -u
if [ ! -x "$1" ]; then
    echo "no Linux build with the simulated tablet at $(dirname "$1"): skipped"
    exit 77
fi
# Wine makes windows only on an X server.
if [ -z "${VELMARIN_XVFB:-}" ]; then
    VELMARIN_XVFB=1 exec xvfb-run -a bash "$0" "$@"
fi
sim=$(realpath "$1") guida=$(realpath "$2") prefisso=$(realpath -m "$3") esegui_wine=$4 loader=$5
export WINEPREFIX=$prefisso WINELOADER=$loader WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
temp=$(mktemp -d)
pid_sim=""
pulisci() {
    [ -n "$pid_sim" ] && kill "$pid_sim" 2>/dev/null
    exec 3<&- 4>&-
    wineserver -k >/dev/null 2>&1
    rm -rf "$temp"
}
trap pulisci EXIT

# The tablet takes its commands on fd 4 and answers on fd 3; its first line
# is its device.
mkfifo "$temp/al_sim" "$temp/dal_sim"
"$sim" <"$temp/al_sim" >"$temp/dal_sim" &
pid_sim=$!
exec 4>"$temp/al_sim" 3<"$temp/dal_sim"
dispositivo=""
read -r -t 30 -u 3 dispositivo
[ -n "$dispositivo" ] || { echo "the simulated tablet printed no device"; exit 1; }

# Wine's server and services start again without the pipes to the tablet;
# the driver talks through them, so it is started directly.
"$esegui_wine" "$prefisso" "$loader" reg add 'HKLM\Software\Wine\Ports' /v COM1 /d "$dispositivo" /f \
    >/dev/null 2>&1 3<&- 4>&- || { echo "cannot map COM1"; exit 1; }
wineserver -k >/dev/null 2>&1
"$esegui_wine" "$prefisso" "$loader" reg query 'HKLM\Software\Wine\Ports' /v COM1 >/dev/null 2>&1 3<&- 4>&-
rm -rf "$prefisso"/drive_c/users/*/AppData/Roaming/velmarin
"$loader" "$guida" <&3 >&4
