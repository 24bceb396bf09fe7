#!/bin/sh
# The C host as a Windows program under Wine: prova_host_c.sh with the host
# run through the build's Wine runner, in a prefix of this test's own (mapping
# COM1 restarts it), where the registry maps COM1 to the simulated tablet's
# pseudo-terminal. The simulated tablet comes from a Linux build of the tree;
# without one the test is skipped.
#
# usage: prova_host_c_wine.sh VELMARIN_SIM HOST_C.exe PREFIX ESEGUI_WINE LOADER
set -u
if [ ! -x "$1" ]; then
    echo "no Linux build with velmarin-sim at $1: skipped"
    exit 77
fi
qui=$(dirname "$(realpath "$0")")
sim=$(realpath "$1") host=$(realpath "$2") prefisso=$(realpath -m "$3") esegui=$(realpath "$4") loader=$5
trap 'WINEPREFIX="$prefisso" wineserver -k >/dev/null 2>&1' EXIT
sh "$qui/../strumenti/prova_host_c.sh" "$host" "$sim" "$esegui $prefisso $loader" \
    "sh $qui/mappa_com1.sh $prefisso $esegui $loader"
