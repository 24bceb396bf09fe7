#!/bin/sh
# The terminal's yes/no box as a person answers it: a tablet calibrated by
# three points is calibrated again, the box asks first, and S, the key the
# box names for yes, goes on to the new calibration. Skipped (77) without
# tmux.
HOST=$1
. "$(dirname "$0")/comune.sh"
prepara_tmux velmarin-conferma


tmux new-session -d -s "$sessione" -x 100 -y 32 "'$HOST' calibrate points calibrate points; echo EXIT=\$?; sleep 60"

# Three points, each typed and then digitized by the simulated tablet; the
# fourth is left with Escape, and three points calibrate.
for est in 100 300 500; do
    attendi "Coord. Nord (X)" || break
    tmux send-keys -t "$sessione" "$est" Tab "$((est + 50))" Enter
    attendi "Digitalizza il Punto di" || break
done
verifica "a fourth point is asked for" attendi "Coord. Nord (X)"
tmux send-keys -t "$sessione" Escape
verifica "the first calibration is done" attendi "calibration done"

verifica "calibrating again asks first" attendi "Tavoletta gi. calibrata"
verifica "the box names Y for yes" contiene "$temp/schermo" "Y: Yes"
tmux send-keys -t "$sessione" y
verifica "Y answers yes: the new calibration asks its first point" attendi "Coord. Nord (X)"
tmux send-keys -t "$sessione" Escape
verifica "the program ends" attendi "EXIT="
fine
