#!/bin/bash
# The reader through COM1 on Linux and under Wine, side by side: the reader
# thread's CPU over 10 s of a quiet line, and a single report's latency
# (lettore_com1.cpp). Under Wine the server does part of every port call's
# work, so its CPU over the same 10 s is given too.
#
# usage: misura.sh LINUX_BUILD WINDOWS_BUILD
#   e.g. bench/com1/misura.sh build/default build/win64
set -u
nativo=$(realpath "$1") win=$(realpath "$2")
sim=$nativo/bench/velmarin_sim_comandata linux=$nativo/bench/velmarin_lettore_com1
windows=$win/bench/velmarin_lettore_com1.exe prefisso=$win/wine-com1
esegui_wine=$(dirname "$0")/../../cmake/esegui_wine.sh loader=/usr/lib/wine/wine64
. "$(dirname "$0")/sim_com1.sh"

# Clock ticks of CPU the Wine server has used so far.
tick_server() {
    local pid
    pid=$(pgrep -n wineserver) || { echo 0; return; }
    awk '{print $14 + $15}' "/proc/$pid/stat"
}

# While the Windows run's quiet line lasts: the server's share of it.
server_in_quiete() {
    local inizio
    until grep -q "quiet line from now" "$temp/windows.txt" 2>/dev/null; do sleep 0.1; done
    inizio=$(tick_server)
    until grep -q "reader CPU" "$temp/windows.txt" 2>/dev/null; do sleep 0.1; done
    echo "Wine server CPU over the same 10 s: $(( ($(tick_server) - inizio) * 1000 / $(getconf CLK_TCK) )) ms" >"$temp/server.txt"
}

avvia_sim
"$linux" "$temp/linux.txt" "$dispositivo" <&3 >&4 || echo "the run on Linux failed"
ferma_sim
avvia_sim
mappa_com1
server_in_quiete &
"$loader" "$windows" "$(winepath -w "$temp/windows.txt" 2>/dev/null)" <&3 >&4 || echo "the run under Wine failed"
wait $!
ferma_sim
echo "--- Linux"; grep -v "from now" "$temp/linux.txt"
echo "--- Wine"; grep -v "from now" "$temp/windows.txt"; cat "$temp/server.txt" 2>/dev/null
