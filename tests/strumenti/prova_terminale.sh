#!/bin/sh
# The terminal front end as a person uses it: velmarin-host runs in tmux, keys
# go in with send-keys and the screen comes back with capture-pane. A sparse
# point calibration is drawn, a letter and an empty field are refused, a good
# entry is taken and the point is waited for on the tablet; Escape ends it and
# the terminal is as it was. Then the tablet selection, all of it. Skipped
# (77) without tmux.
HOST=$1
. "$(dirname "$0")/comune.sh"
prepara_tmux velmarin-prova

esc=$(printf '\033')
schermo() { tmux capture-pane -p -t "$sessione"; }
# The control in reverse video.
fuoco() { tmux capture-pane -p -e -t "$sessione" | grep -o "${esc}\[7m[^${esc}]*" | sed "s/${esc}\[7m//"; }
# Waits up to 30 s (a sanitizer build is slow) for the text $2 in what $1
# shows, kept in $temp/$1.
aspetta() {
    for _ in $(seq 300); do
        "$1" >"$temp/$1"
        grep -q -- "$2" "$temp/$1" && return 0
        sleep 0.1
    done
    echo "--- $1 does not show: $2"
    cat "$temp/$1"
    return 1
}
attendi() { aspetta schermo "$1"; }

tmux new-session -d -s "$sessione" -x 100 -y 32 \
    "prima=\$(stty -g); '$HOST' calibrate points; echo EXIT=\$?; [ \"\$prima\" = \"\$(stty -g)\" ] && echo TERMINAL RESTORED; sleep 60"

verifica "the sparse point dialog is drawn" attendi "Calibrazione per punti sparsi"
verifica "with its East label" contiene "$temp/schermo" "Coord. Est (Y)"
verifica "and its default button" contiene "$temp/schermo" "<<   OK   >>"

tmux send-keys -t "$sessione" "12a.5" Enter
verifica "a refused entry is signalled" attendi "Bip: valore non accettato"
verifica "the letter was not typed" contiene "$temp/schermo" "\[12.5  "
verifica "the dialog stays open" contiene "$temp/schermo" "Calibrazione per punti sparsi"

tmux send-keys -t "$sessione" BSpace BSpace "7.5" Tab "-40" Enter
verifica "a good entry opens the wait for the point" attendi "Digitalizza il Punto di"
verifica "which shows the East typed" contiene "$temp/schermo" "127.500"
verifica "and the North typed" contiene "$temp/schermo" "-40.000"

# The simulated tablet presses button 1 at its next corner: the next point.
verifica "the tablet's press asks for the next point" attendi "Coord. Nord (X)"
tmux send-keys -t "$sessione" Escape
verifica "Escape ends the calibration, not done with one point" attendi "calibration not done"
verifica "the program ends with 0" attendi "EXIT=0"
verifica "the terminal is restored" attendi "TERMINAL RESTORED"

# The tablet selection, worked through as a person would: Tab from group to
# group, the arrows within one, Space to choose; "Limiti" has the simulated
# tablet digitize two corners, "Prova" shows it live; Enter takes it all.
tmux kill-session -t "$sessione"
tmux new-session -d -s "$sessione" -x 100 -y 40 "'$HOST' config; echo EXIT=\$?; sleep 60"
verifica "the tablet selection is drawn" attendi "Scelta tavoletta"
verifica "with the simulated model chosen" contiene "$temp/schermo" "Tipo tavoletta \[ Summa MicroGrid 3"

tmux send-keys -t "$sessione" Tab
verifica "Tab enters the port group at its checked radio" aspetta fuoco "(\*) Com1"
tmux send-keys -t "$sessione" Tab
verifica "the next Tab skips the other ports to the speed chosen" aspetta fuoco "(\*) 9600"
tmux send-keys -t "$sessione" Down Down
verifica "Down walks the group round to its first radio" aspetta fuoco "( ) 4800"
tmux send-keys -t "$sessione" Up Space
verifica "Up goes back, Space chooses 19200" aspetta fuoco "(\*) 19200"
verifica "and 9600 is no longer chosen" attendi "( ) 9600"

tmux send-keys -t "$sessione" BTab BTab BTab BTab
verifica "Shift-Tab goes back round the list to Limiti" aspetta fuoco "<  Limiti  >"
tmux send-keys -t "$sessione" Enter
verifica "Enter opens the limits" attendi "Limiti tavoletta"
verifica "which ask for the lower left corner first" attendi "il punto inferiore a sinistra"
verifica "then the upper right one" attendi "il punto superiore a destra"
verifica "and close after it" attendi "Scelta tavoletta"

tmux send-keys -t "$sessione" Tab
verifica "Tab goes on to Prova" aspetta fuoco "<  Prova   >"
tmux send-keys -t "$sessione" Space
verifica "the live test shows the counts" attendi "Prova tavoletta"
verifica "with the tablet's presses" attendi "<1>"
verifica "and the counts of a grid node" attendi "\[00[258]000\]"
verifica "and the cross in its frame" attendi "|  | *#"
tmux send-keys -t "$sessione" Escape
verifica "Escape leaves the test for the selection" attendi "Scelta tavoletta"

tmux send-keys -t "$sessione" Tab
verifica "Tab goes round to the model list" aspetta fuoco "\[ Summa MicroGrid 3"
tmux send-keys -t "$sessione" Enter
verifica "Enter there presses OK and takes the choice with the speed and the limits digitized" \
    attendi "tablet set up: model 5 on COM1 at 19200 baud, limits x 2000 to 8000, y 2000 to 8000"
verifica "and the program ends with 0" attendi "EXIT=0"
fine
