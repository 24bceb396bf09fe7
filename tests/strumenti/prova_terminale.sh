#!/bin/sh
# The terminal front end as a first-time user meets it, in tmux at 80 by 24:
# menu, selection, watches, both calibrations; Ctrl-Z and fg, a resized window,
# and a quit from the menu that leaves the shell's lines where they were.
# Skipped (77) without tmux.
HOST=$1
. "$(dirname "$0")/comune.sh"
prepara_tmux velmarin-prova

esc=$(printf '\033')
# The screen row by row, wrapped lines not joined as the shared schermo joins
# them: the layout checks here look at the rows themselves.
schermo() { tmux capture-pane -p -t "$sessione"; }
# The main screen with what scrolled off it since the last clear-history.
storia() { tmux capture-pane -p -S -200 -t "$sessione"; }
# The control in reverse video.
fuoco() { tmux capture-pane -p -e -t "$sessione" | grep -o "${esc}\[7m[^${esc}]*" | sed "s/${esc}\[7m//"; }
# Waits until the screen no longer shows $1.
sparito() {
    for _ in $(seq 300); do
        schermo | grep -q -- "$1" || return 0
        sleep 0.1
    done
    echo "--- the screen still shows: $1"
    return 1
}
ultima() { schermo | grep -v '^$' | tail -n1; }
in_cima() { head -n1 "$temp/schermo" | grep -q -- "$1"; }
tasti() { tmux send-keys -t "$sessione" "$@"; }
nuova_storia() { tmux clear-history -t "$sessione"; }

apri_sessione "$sessione" \
    "prima=\$(stty -g); '$HOST' --step 40; echo EXIT=\$?; [ \"\$prima\" = \"\$(stty -g)\" ] && echo TERMINAL RESTORED; sleep 60"

verifica "the menu is in English" attendi "c  choose and set up the tablet"
verifica "and names the simulated tablet" attendi "velmarin-host: Summa MicroGrid 3 on COM1"

# The selection, with the line of the tablet above it and the keys under it.
tasti c
verifica "c opens the tablet selection" attendi "+= Scelta tavoletta ====="
verifica "under the line of the tablet, on top" in_cima "^velmarin-host: Summa MicroGrid 3 on COM1"
verifica "the model list has the focus" aspetta fuoco "\[ Summa MicroGrid 3"
tasti Left Left Left
verifica "Left goes up the list to model 2" attendi "Tipo tavoletta \[ SummaGraph.MM ASCII"
tasti Tab
verifica "Tab enters the port group" aspetta fuoco "(\*) Com1"
tasti Down Down Space
verifica "Down and Space choose COM3" aspetta fuoco "(\*) Com3"

tasti BTab BTab BTab BTab
verifica "Shift-Tab goes back round to Bottoni" aspetta fuoco "< Bottoni  >"
tasti Enter
verifica "the button functions fit the screen" attendi "^ *+= Definizione funzioni bottone =*+$"
tasti Right Right Right Right Right
verifica "a label too long for its list is marked as cut" attendi "\[Inizia Polilinea - Fine E~v\]"
verifica "and shown whole under the dialog" attendi "^ \[Inizia Polilinea - Fine Ent.\]  Left/Right"
tasti Left Left Left Left Left
verifica "with their OK" attendi "<< *OK *>>"
tasti Enter
verifica "Enter on a list takes the functions" attendi "+= Scelta tavoletta ====="
verifica "and the focus is back on OK" aspetta fuoco "<<   OK   >>"

tasti Tab Tab Tab
verifica "Tab goes on to Limiti" aspetta fuoco "<  Limiti  >"
tasti Enter
verifica "Enter opens the limits" attendi "Limiti tavoletta"
verifica "on the model and port chosen" in_cima "^velmarin-host: SummaGraph.MM ASCII on COM3"
verifica "the built-in tablet takes the lower left corner" attendi "il punto superiore a destra"
verifica "and the upper right one" attendi "+= Scelta tavoletta ====="
tasti Tab Tab Tab Tab Enter
verifica "Prova shows the tablet live" attendi "Prova tavoletta"
verifica "with its presses" attendi "<1>"
verifica "and the cross at the frame's left limit" attendi "|  |#"
verifica "and at its right limit" attendi "#|  "
tasti Escape
verifica "Escape leaves the test" attendi "+= Scelta tavoletta ====="
nuova_storia
tasti Enter
verifica "Enter takes the choice" aspetta storia "tablet set up: model 2 (SummaGraph.MM ASCII) on COM3"
verifica "and prints its limits" aspetta storia "limits: x 2000 to 8000, y 2000 to 8000"
verifica "and the button that confirms" aspetta storia "button 1: Conferma"

nuova_storia
tasti w
verifica "a watch hears the new tablet" aspetta storia "button 1 Conferma"
tasti q
verifica "q ends the watch" aspetta storia "^-- end:"

# A calibration by four points, finished after the fourth.
nuova_storia
tasti p
verifica "p opens the sparse point entry" attendi "Calibrazione per punti sparsi"
verifica "which says which point it asks for" attendi "Point 1: its ground East and North"
n=0
for punto in "200 200" "200 800" "800 800" "800 200"; do
    n=$((n + 1))
    tasti "${punto% *}" Tab "${punto#* }" Enter
    verifica "point $n: the wait for the tablet" attendi "Digitalizza il Punto di"
    verifica "point $n: the tablet takes it" attendi "Point $((n + 1)): its ground East and North"
done
verifica "after four points Escape is said to finish" attendi "Esc: done, with the 4 points taken."
tasti Escape
verifica "and it does" aspetta storia "calibration done; calibrated by sparse points"

# A grid of 2 by 2 squares, after the question whether to give up the points.
nuova_storia
tasti g
verifica "g asks first whether to give up the calibration" attendi "Continuo ?"
tasti n
verifica "n keeps the calibration: the menu comes back, no grid entry" aspetta ultima "^>$"
tasti g
verifica "g asks again" attendi "Continuo ?"
tasti y
verifica "g opens the grid entry" attendi "Calibrazione per griglia"
tasti 2 Tab 2 Tab 0 Tab 0 Tab 50 Tab 50 Enter
verifica "the tablet takes the nine nodes" aspetta storia "calibration done; calibrated by grid: East "
verifica "and the area is told in the digits it needs" \
    grep -q "calibrated by grid: East -\?[0-9]* to [0-9]*, North -\?[0-9]* to [0-9]*$" "$temp/storia"
tasti q
verifica "q ends the program with 0" attendi "EXIT=0"
verifica "and the terminal is restored" attendi "TERMINAL RESTORED"

# In a shell: the programming wait, Ctrl-Z and fg, a window resized.
apri_sessione "velmarin-shell-$$" "env PS1='shell> ' bash --norc --noprofile -i"
verifica "the shell is ready" attendi "shell>"
tasti "'$HOST' --step 40 calibrate points" Enter
verifica "programming the tablet shows a busy mark" attendi "Busy: programming the tablet"
verifica "then the sparse point entry" attendi "Calibrazione per punti sparsi"
tasti 12
verifica "keys reach the entry" attendi "\[12 "
tasti C-z
verifica "Ctrl-Z gives the shell back" attendi "Stopped"
tasti fg Enter
verifica "fg draws the dialog again" attendi "Calibrazione per punti sparsi"
tasti 5
verifica "and keys reach the dialog again" attendi "\[125 "
tmux resize-window -t "$sessione" -x 40 -y 12
verifica "a smaller window cuts the dialog with a marker" attendi "more lines"
tmux resize-window -t "$sessione" -x 80 -y 24
verifica "a larger one shows it whole again" sparito "more lines"
tasti Escape
verifica "Escape ends the calibration" attendi "calibration not done"
verifica "the shell is back" aspetta ultima "^shell>$"
tasti "echo EXIT=\$?" Enter
verifica "and the program ended with 1: the calibration was not done" attendi "EXIT=1"
tasti "'$HOST' --step 40" Enter
verifica "the menu in the shell" attendi "q  quit"
tasti q
verifica "q leaves the prompt under the menu, not over the lines before it" aspetta ultima "^shell>$"
fine
