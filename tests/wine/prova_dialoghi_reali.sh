#!/bin/bash
# The real dialogs under Wine, inside a virtual X display (xvfb-run), in a
# prefix of this test's own, made through the build's Wine runner. The
# program writes each dialog as a BMP into the pictures' folder; they are
# then turned into PNGs there.
#
# usage: prova_dialoghi_reali.sh PROGRAM.exe PREFIX PICTURES ESEGUI_WINE LOADER
set -u
if ! command -v xvfb-run >/dev/null 2>&1; then
    echo "no xvfb-run: skipped"
    exit 77
fi
qui=$(dirname "$(realpath "$0")")
programma=$(realpath "$1") prefisso=$(realpath -m "$2") immagini=$(realpath -m "$3") esegui=$(realpath "$4") loader=$5
export WINEPREFIX=$prefisso WINELOADER=$loader VELMARIN_IMMAGINI="Z:$immagini"  # Wine's drive Z: is the Linux root
trap 'wineserver -k >/dev/null 2>&1' EXIT
mkdir -p "$immagini"
rm -f "$immagini"/*.bmp
# No window manager runs in the virtual display: Wine draws the windows'
# frames and captions itself, so that the pictures show them.
"$esegui" "$prefisso" "$loader" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
# The prefix's server, started outside the display, goes first: windows
# are made only by one that starts inside it.
wineserver -k >/dev/null 2>&1
xvfb-run -a -s "-screen 0 1024x768x24" "$esegui" "$prefisso" "$loader" "$programma"
esito=$?
for bmp in "$immagini"/*.bmp; do
    [ -f "$bmp" ] && python3 "$qui/bmp_png.py" "$bmp" "${bmp%.bmp}.png" && rm -f "$bmp"
done
exit "$esito"
