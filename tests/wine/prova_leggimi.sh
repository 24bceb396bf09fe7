#!/bin/bash
# The README's lines for a C host on Windows, run as written in a scratch tree
# laid out as it assumes: MinGW builds the sample host; in the 64-bit build
# Wine runs it twice against a simulated tablet, then against a polled one
# (skipped without a Linux build).
# usage: prova_leggimi.sh SOURCES BUILD ARCHITECTURE LINUX_BUILD
set -u
. "$(dirname "$0")/../support/blocco_leggimi.sh"
sorgenti=$(realpath "$1") build=$(realpath "$2") architettura=$3 linux=$(realpath -m "$4")
case "$architettura" in
    i686) cartella=win32 ;;
    *) cartella=win64 ;;
esac
temp=$(mktemp -d)
pid_sim=""
trap '[ -n "$pid_sim" ] && kill -- -"$pid_sim" 2>/dev/null; WINEPREFIX=$temp/wine wineserver -k 2>/dev/null; rm -rf "$temp"' EXIT
mkdir -p "$temp/build"
ln -s "$sorgenti/include" "$sorgenti/tools" "$temp/"
ln -s "$build" "$temp/build/$cartella"
ln -s "$linux" "$temp/build/default"
cd "$temp" || exit 1

righe=$(blocco_leggimi "$sorgenti/README.md" "host C per Windows" | grep -F -- "$architettura-w64-mingw32-gcc")
[ -n "$righe" ] || { echo "FAIL the README has no build line for $architettura"; exit 1; }
echo "+ $righe"
bash -e -c "$righe" || { echo "FAIL the README's build line"; exit 1; }
[ -f "build/$cartella/host_c_mingw.exe" ] || { echo "FAIL no host_c_mingw.exe"; exit 1; }

if [ "$cartella" = win32 ]; then echo "built; no 32-bit Wine here to run it"; exit 0; fi
[ -x "$linux/tools/velmarin-sim" ] || { echo "no Linux build with velmarin-sim: skipped"; exit 77; }
export WINEPREFIX="$temp/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="

# The Wine block runs in a process group of its own, the tablet on fd 3, and
# the group goes with it: else the tablet plays on and wineserver holds output.
# Its host runs twice on the same line; then the whole block runs again for
# the polled model 4, whose polls the reader writes while it reads answers.
wine_righe=$(blocco_leggimi "$sorgenti/README.md" "host C sotto Wine")
ospite=$(printf '%s\n' "$wine_righe" | tail -n 1)
interrogata=${wine_righe//--model 2/--model 4}
[ "$interrogata" != "$wine_righe" ] || { echo "FAIL the README's Wine lines no longer play model 2"; exit 1; }
printf '+ %s\n' "$wine_righe"
setsid bash -e -c "$wine_righe
$ospite
$interrogata" >uscita.txt 2>&1 </dev/null &
pid_sim=$!
wait "$pid_sim"
esito=$?
kill -- -"$pid_sim" 2>/dev/null
pid_sim=""
uscita=$(tr -d '\r' <uscita.txt)  # Wine's console ends lines with CR LF
printf '%s\n' "$uscita"
[ "$esito" = 0 ] || { echo "FAIL the README's Wine lines ended with $esito"; exit 1; }
corse=$(printf '%s\n' "$uscita" | grep -c '^stopped: [0-9]* moves, 2 presses$')
[ "$corse" = 3 ] || { echo "FAIL three runs should hear two presses each, $corse did"; exit 1; }
echo "every run heard its presses"
