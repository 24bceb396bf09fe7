#!/bin/sh
# The C host on a velmarin-sim, a text model and a binary one: it hears the
# figure's moves and corner presses, in ground by its own fit (East = x / 10
# + 500, North = y / 10 + 200), stops, and hears nothing after.

# usage: prova_host_c.sh HOST_C SIM
HOST=$1
SIM=$2
. "$(dirname "$0")/comune.sh"
# One press at each corner: a press that was never made (a report joined to
# a piece of another) takes a corner's place.
pressioni=4

ospite() {  # ospite MODEL: runs the host on the simulator's device
    timeout 40 "$HOST" --model "$1" --port 3 --device "$dispositivo" --presses $pressioni >"$temp/out" 2>"$temp/err"
}

"$HOST" --model 9 >/dev/null 2>&1
verifica "a model outside 1..8 is refused with 2" test $? -eq 2
"$HOST" --model 2 --port 4 --device /nonexistent/tty0 >"$temp/out" 2>"$temp/err"
verifica "a missing port is refused with 1" test $? -eq 1
verifica "the refusal names the port" contiene "$temp/err" "COM4 refused"

for voce in "2 SummaGraph.MM ASCII" "5 Summa MicroGrid 3"; do
    m=${voce%% *}
    avvia_sim --model $m --step 20 --seconds 60 || exit 1
    ospite $m
    verifica "model $m: the host ends with 0" test $? -eq 0
    verifica "model $m: it names the model" contiene "$temp/out" "model $voce on COM"
    verifica "model $m: its port is in the port list" contiene "$temp/out" "port: COM3 $dispositivo, COM3, mapped"
    verifica "model $m: it reports its calibration" contiene "$temp/out" \
        "calibration: 4 points, rms 0.000, standard deviation 0.000, warnings 0x0"
    verifica "model $m: it heard a move" grep -Eq '^move [0-9]+ [0-9]+$' "$temp/out"
    verifica "model $m: it heard presses" grep -Eq '^button [0-9]+ [0-9]+ [0-9]+ function .* ground ' "$temp/out"
    angoli=$(grep -Ec '^button 1 (1000|9000) (1000|9000) function Conferma ground (600|1400)\.000 (300|1100)\.000$' "$temp/out")
    verifica "model $m: $pressioni presses at corners, in ground coordinates" test "$angoli" -eq $pressioni
    # Nothing after the stop, and the summary counts what was printed.
    verifica "model $m: the stop is the last line" sh -c "tail -n1 '$temp/out' | grep -q '^stopped: '"
    mosse=$(grep -c '^move ' "$temp/out")
    pressioni=$(grep -c '^button ' "$temp/out")
    verifica "model $m: the summary counts every event" contiene "$temp/out" "stopped: $mosse moves, $pressioni presses"
    kill "$(echo $figli | awk '{print $NF}')" 2>/dev/null
done

# Digitizing through the library's session: each corner's press of the
# confirm button is a point feature.
avvia_sim --model 5 --step 20 --seconds 60 || exit 1
timeout 40 "$HOST" --model 5 --port 3 --device "$dispositivo" --presses $pressioni --mode digitize \
    >"$temp/out" 2>"$temp/err"
verifica "digitizing: the host ends with 0" test $? -eq 0
punti=$(grep -Ec '^feature point, 1 vertices, first (600|1400)\.000 (300|1100)\.000$' "$temp/out")
verifica "digitizing: $pressioni points at the corners, in ground coordinates" test "$punti" -ge $pressioni
verifica "digitizing: the session ends" grep -Eq '^stopped: [0-9]+ moves, [0-9]+ features$' "$temp/out"
fine
