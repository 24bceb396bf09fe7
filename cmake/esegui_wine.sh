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
      "$loader" wineboot --init >/dev/null 2>&1 </dev/null
      wineserver -w
      touch "$prefisso/.pronto"
    fi
  ) 9>"$prefisso.lock"
fi
# Wine's server stays up between the programs of a run (up to 30 s after the
# last), started here apart from any program; a server already up is kept.
wineserver -p30 </dev/null >/dev/null 2>&1 || true
# The first program starts Wine's services, which stay as long as the server
# and keep the descriptors they were given: the program writes to files, so
# that whoever reads its output (ctest) is not held until they end.
uscite=$(mktemp -d)
trap 'rm -rf "$uscite"' EXIT
esito=0
"$loader" "$@" >"$uscite/out" 2>"$uscite/err" </dev/null || esito=$?
cat "$uscite/out"
cat "$uscite/err" >&2
exit $esito
