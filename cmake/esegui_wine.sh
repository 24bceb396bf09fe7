#!/bin/sh
# Runs a Windows program of the build under Wine, in the build's own Wine
# prefix, which the first run makes (wineboot, once, under a lock).
# Usage: esegui_wine.sh PREFIX LOADER PROGRAM [ARGUMENTS...]
# The programs open no window, so no X server is needed; Mono and Gecko are
# left out of the prefix, which keeps making it short.
set -e
prefisso="$1"; loader="$2"; shift 2
export WINEPREFIX="$prefisso" WINELOADER="$loader"
export WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES="mscoree,mshtml="
if [ ! -f "$prefisso/.pronto" ]; then
  mkdir -p "$(dirname "$prefisso")"
  (
    flock 9
    if [ ! -f "$prefisso/.pronto" ]; then
      "$loader" wineboot --init >/dev/null 2>&1
      wineserver -w
      touch "$prefisso/.pronto"
    fi
  ) 9>"$prefisso.lock"
fi
exec "$loader" "$@"
