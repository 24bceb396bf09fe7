#!/bin/sh
# Runs a Windows program of the build under Wine, in the build's own Wine
# prefix, which the first run makes (wineboot, once, under a lock).
# Usage: esegui_wine.sh PREFIX LOADER PROGRAM [ARGUMENTS...]
# The programs open no window, so no X server is needed; Mono and Gecko are
# left out of the prefix, which keeps making it short. The program keeps its
# own standard streams (a test may talk through them). Wine's server and
# services, started by the first program of a run, keep that program's
# descriptors while they stay up, so ctest counts that one test as lasting
# until the run ends.
set -e
prefisso="$1"; loader="$2"; shift 2
export WINEPREFIX="$prefisso" WINELOADER="$loader"
export WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES="mscoree,mshtml="
if [ ! -f "$prefisso/.pronto" ]; then
  mkdir -p "$(dirname "$prefisso")"
  (
    flock 9
    # On a busy machine wineboot now and then gives up half-way; the prefix
    # it left is completed by another run. The last failure is shown.
    for prova in 1 2 3; do
      [ -f "$prefisso/.pronto" ] && break
      if "$loader" wineboot --init >"$prefisso.boot.log" 2>&1 && wineserver -w; then
        touch "$prefisso/.pronto"
      elif [ "$prova" = 3 ]; then
        echo "esegui_wine: wineboot failed three times:" >&2
        cat "$prefisso.boot.log" >&2
        exit 1
      fi
    done
  ) 9>"$prefisso.lock"
fi
exec "$loader" "$@"
