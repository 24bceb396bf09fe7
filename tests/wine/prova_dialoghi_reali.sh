#!/bin/bash
# The real dialogs under Wine, inside a virtual X display (xvfb-run), in a
# prefix of this test's own, made through the build's Wine runner.
#
# usage: prova_dialoghi_reali.sh PROGRAM.exe PREFIX ESEGUI_WINE LOADER
set -u
command -v xvfb-run >/dev/null 2>&1 || { echo "no xvfb-run: skipped"; exit 77; }
programma=$(realpath "$1") prefisso=$(realpath -m "$2") esegui=$(realpath "$3") loader=$4
export WINEPREFIX=$prefisso WINELOADER=$loader
trap 'wineserver -k >/dev/null 2>&1' EXIT
# No window manager runs in the virtual display: Wine draws the windows'
# frames and captions itself.
"$esegui" "$prefisso" "$loader" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
# The prefix's server, started outside the display, goes first: windows
# are made only by one that starts inside it.
wineserver -k >/dev/null 2>&1
exec xvfb-run -a -s "-screen 0 1024x768x24" "$esegui" "$prefisso" "$loader" "$programma"
