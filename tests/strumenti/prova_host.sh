#!/bin/sh
# velmarin-host's command line: clear errors for what cannot run, and a watch
# of a real device - a velmarin-sim on its pseudo-terminal - when all is right.
HOST=$1
SIM=$2
. "$(dirname "$0")/comune.sh"

# host arguments | exit code | what the message says
while IFS='|' read -r argomenti codice messaggio; do
    # shellcheck disable=SC2086
    "$HOST" $argomenti </dev/null >"$temp/out" 2>&1
    esito=$?
    verifica "'$argomenti' ends with $esito, expected $codice" test "$esito" -eq "$codice"
    verifica "'$argomenti' says '$messaggio'" contiene "$temp/out" "$messaggio"
done <<'TABELLA'
--help|0|usage: velmarin-host
--model 9 watch|2|model 9 is not a tablet model (1 to 8)
--model 0|2|model 0 is not a tablet model
--model five|2|model five is not a tablet model
--model|2|--model needs a value
--port 7 watch|2|port 7 is not COM1 to COM4
--device /dev/null watch|2|--device needs --model
--device /nonexistent/tty0 --model 2 watch|1|COM1 (/nonexistent/tty0): cannot be opened: No such file
calibrate|2|calibrate needs points or grid
--limits 0,0,100|2|limits 0,0,100 are not X1,Y1,X2,Y2
--limits 5,0,5,100|2|with X1 < X2
--limits 0,0,9,9x|2|are not X1,Y1,X2,Y2
--limits 0,0,4294967297,1|2|are not X1,Y1,X2,Y2
--limits 0,0,99999999999,5|2|are not X1,Y1,X2,Y2
calibrate lines|2|calibrate needs points or grid
--out|2|--out needs a value
--stream-step 0|2|stream step 0 is not a distance above 0
--stream-step 2x|2|stream step 2x is not a distance above 0
frobnicate|2|unknown option or command frobnicate
demo --model 3|2|demo runs alone
demo watch|2|demo runs alone
config|2|the dialogs need a terminal
calibrate points|2|the dialogs need a terminal
TABELLA

avvia_sim --model 2 --step 20 --seconds 30 || exit 1

# Held open by another process that took no lock (a terminal program, a
# modem manager), the device opens, and the host names the holder.
sleep 60 <"$dispositivo" &
tenitore=$!
figli="$figli $tenitore"
timeout 20 "$HOST" --device "$dispositivo" --model 2 watch --count 1 </dev/null >"$temp/out" 2>&1
verifica "a device held open without a lock is still watched" test $? -eq 0
verifica "the host names the process that holds the device open" \
    contiene "$temp/out" "$dispositivo is also held open by sleep (pid $tenitore)"
"$HOST" --device "$dispositivo" --port 3 ports >"$temp/porte" 2>&1
verifica "the port list shows the mapped device and who holds it" \
    grep -Eq "^COM3 +$dispositivo +COM3, mapped, held by sleep \(pid $tenitore\)$" "$temp/porte"
kill "$tenitore"

# Free, it is watched: the figure presses button 1 at each corner.
timeout 20 "$HOST" --device "$dispositivo" --model 2 watch --count 2 </dev/null >"$temp/out" 2>&1
verifica "a watch of two presses ends by itself" test $? -eq 0
verifica "two presses are printed" test "$(grep -c '^press' "$temp/out")" -eq 2
verifica "a press names its function" contiene "$temp/out" "button 1 Conferma"
verifica "the counts line is printed" contiene "$temp/out" "presses"
fine
