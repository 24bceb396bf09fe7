#!/bin/sh
# Maps COM1 of a Wine prefix to a device (HKLM\Software\Wine\Ports) and
# stops the prefix's server, so that the next program it runs sees the map.
# usage: mappa_com1.sh PREFIX ESEGUI_WINE LOADER DEVICE
set -e
"$2" "$1" "$3" reg add 'HKLM\Software\Wine\Ports' /v COM1 /d "$4" /f >/dev/null 2>&1
WINEPREFIX="$1" wineserver -k >/dev/null 2>&1 || true
