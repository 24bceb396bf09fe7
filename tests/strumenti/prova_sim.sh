#!/bin/sh
# velmarin-sim as a host meets it: its options, the polled model, a path from
# a file, and the log of what the host sent. The host's tests meet its
# streaming models.
SIM=$1
. "$(dirname "$0")/comune.sh"

"$SIM" --help >"$temp/aiuto" 2>&1
verifica "--help prints the usage and succeeds" test $? -eq 0
verifica "--help names the models option" contiene "$temp/aiuto" "--model N"

for m in 0 9 x; do
    "$SIM" --model $m >"$temp/err" 2>&1
    verifica "model $m is refused with 2" test $? -eq 2
    verifica "model $m is named in the message" contiene "$temp/err" "model $m is not a tablet model"
done

printf '100 200 0\nnot a line\n' >"$temp/cattivo"
"$SIM" --file "$temp/cattivo" >"$temp/err" 2>&1
verifica "a bad path file is refused" test $? -eq 1
verifica "the bad line is named" contiene "$temp/err" "line 2"

# The polled model answers a poll, and only a poll, with an "@" line; the
# log shows the poll as hex.
avvia_sim --model 4 --step 20 --seconds 5 --log "$temp/log" || exit 1
leggi_dispositivo "$dispositivo" 100 1 "$temp/muto"
verifica "model 4 says nothing unpolled" test ! -s "$temp/muto"
exec 3<>"$dispositivo"
stty -F "$dispositivo" raw -echo
printf '?\r\n' >&3
timeout 2 head -c 10 <&3 >"$temp/risposta"
exec 3>&-
verifica "model 4 answers a poll with an @ line" grep -q '^@' "$temp/risposta"
registro() { cat "$temp/log"; }
verifica "the log shows the poll in hex" aspetta registro "3F 0D 0A"

# A file path is played once, its coordinates in the reports.
printf '# a press at one point\n31234 27654 0\n31234 27654 1\n31234 27654 0\n' >"$temp/percorso"
avvia_sim --model 2 --file "$temp/percorso" --step 20 --seconds 5 || exit 1
leggi_dispositivo "$dispositivo" 200 2 "$temp/file"
verifica "the file's point is reported" contiene "$temp/file" "31234,27654,1"
fine
