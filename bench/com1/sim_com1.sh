# Sourced by misura.sh: a commanded simulated tablet (sim_comandata, a
# Linux program) on a pseudo-terminal, with its commands on fd 4 and its
# answers on fd 3, and COM1 of the run's own prefix (whose map restarts it)
# mapped to its device.
#
# Needs $prefisso, $esegui_wine, $loader and $sim (and $linux, if set): these
# two come from a Linux build of the tree; without one it stops (77).
# Sets $temp, and $dispositivo once the tablet runs. Everything goes on exit.
for programma in "$sim" ${linux:+"$linux"}; do
    [ -x "$programma" ] || { echo "no Linux build with $programma: skipped"; exit 77; }
done
sim=$(realpath "$sim") linux=$(realpath -m "${linux:-}")
export WINEPREFIX=$prefisso WINELOADER=$loader WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
temp=$(mktemp -d)
pid_sim=""
trap '[ -n "$pid_sim" ] && kill "$pid_sim" 2>/dev/null; exec 3<&- 4>&-; wineserver -k >/dev/null 2>&1; rm -rf "$temp"' EXIT

avvia_sim() {
    rm -f "$temp/al_sim" "$temp/dal_sim"
    mkfifo "$temp/al_sim" "$temp/dal_sim"
    "$sim" <"$temp/al_sim" >"$temp/dal_sim" &
    pid_sim=$!
    exec 4>"$temp/al_sim" 3<"$temp/dal_sim"
    dispositivo=""
    read -r -t 30 -u 3 dispositivo
    [ -n "$dispositivo" ] || { echo "the simulated tablet printed no device"; exit 1; }
}

ferma_sim() {
    exec 3<&- 4>&-
    wait "$pid_sim"
    pid_sim=""
}

# Maps COM1 to the tablet and starts the prefix again through the runner,
# so that its server and services hold none of the pipes to the tablet: a
# program started directly afterwards alone holds them.
mappa_com1() {
    sh "$(dirname "${BASH_SOURCE[0]}")/mappa_com1.sh" "$prefisso" "$esegui_wine" "$loader" "$dispositivo" 3<&- 4>&- ||
        { echo "cannot map COM1"; exit 1; }
    "$esegui_wine" "$prefisso" "$loader" reg query 'HKLM\Software\Wine\Ports' /v COM1 >/dev/null 2>&1 3<&- 4>&-
}
