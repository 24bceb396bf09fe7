#!/bin/bash
# The README's venv lines for the Python module, run as written in a scratch
# tree (python/ copied, build/default this build): they print the version.
# usage: prova_venv.sh SOURCES BUILD

set -u
. "$(dirname "$0")/../support/blocco_leggimi.sh"
sorgenti=$(realpath "$1") build=$(realpath "$2")
temp=$(mktemp -d)
trap 'rm -rf "$temp"' EXIT
mkdir -p "$temp/build"
cp -r "$sorgenti/python" "$temp/python"
ln -s "$build" "$temp/build/default"
cd "$temp" || exit 1
righe=$(blocco_leggimi "$sorgenti/README.md" "Python in un ambiente virtuale")
[ -n "$righe" ] || { echo "FAIL the README has no Python install lines"; exit 1; }
printf '+ %s\n' "$righe"
uscita=$(env -u PYTHONPATH -u VELMARIN_LIBRARY bash -e -c "$righe" 2>&1)
esito=$?
printf '%s\n' "$uscita"
[ "$esito" = 0 ] || { echo "FAIL the lines ended with $esito"; exit 1; }
versione=$(sed -n 's/^project(velmarin VERSION \([0-9.]*\).*/\1/p' "$sorgenti/CMakeLists.txt")
[ "$(printf '%s\n' "$uscita" | tail -n 1)" = "$versione" ] || { echo "FAIL the module does not say $versione"; exit 1; }
echo "installed; the module says $versione"
