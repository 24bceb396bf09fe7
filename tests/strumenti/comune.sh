# Helpers shared by the tests of the programs. Each test sources this file.
set -u
fallite=0
temp=$(mktemp -d)
export XDG_CONFIG_HOME="$temp/config"  # velmarin-host keeps its set-up inside the test
figli=""
pulisci() {
    for p in $figli; do kill "$p" 2>/dev/null; done
    wait 2>/dev/null
    rm -rf "$temp"
}
trap pulisci EXIT

verifica() {  # verifica DESCRIPTION CONDITION...
    descrizione=$1
    shift
    if "$@"; then
        echo "ok   $descrizione"
    else
        echo "FAIL $descrizione"
        fallite=$((fallite + 1))
        return 1
    fi
}

contiene() { grep -q -- "$2" "$1"; }

# Waits up to $VELMARIN_ATTESA seconds for the command $1 to print $2, kept in
# $temp/$1 and shown if it never comes; under tmux that ends the test there.
aspetta() {
    for _ in $(seq $((${VELMARIN_ATTESA:-15} * 10))); do
        "$1" >"$temp/$1" 2>/dev/null
        grep -q -- "$2" "$temp/$1" && return 0
        sleep 0.1
    done
    echo "--- $1 does not show: $2"
    cat "$temp/$1"
    if [ -n "${sessione:-}" ]; then
        echo "FAIL the screen above never showed: $2; the test stops here"
        exit 1
    fi
    return 1
}
# The tmux screen of $sessione, wrapped lines joined.
schermo() { tmux capture-pane -p -J -t "$sessione"; }
attendi() { aspetta schermo "$1"; }

# Starts velmarin-sim and sets $dispositivo once printed, from $uscita_sim, a
# file of each simulator's own (never an earlier one's device).
sim_avviati=0
avvia_sim() {
    sim_avviati=$((sim_avviati + 1))
    uscita_sim="$temp/sim.$sim_avviati.out"
    : >"$uscita_sim"
    "$SIM" "$@" >"$uscita_sim" 2>"$temp/sim.$sim_avviati.err" &
    figli="$figli $!"
    for _ in $(seq 50); do
        dispositivo=$(head -n1 "$uscita_sim" 2>/dev/null)
        [ -n "$dispositivo" ] && return 0
        sleep 0.1
    done
    echo "velmarin-sim printed no device"
    return 1
}

# Under tmux: skipped (77) without it; session $sessione after $1, socket in
# $temp, server ended on the way out.

prepara_tmux() {
    command -v tmux >/dev/null 2>&1 || { echo "tmux is missing: skipped"; exit 77; }
    sessione="$1-$$"
    export TMUX_TMPDIR="$temp"
    trap 'tmux kill-server 2>/dev/null; pulisci' EXIT
}
# Runs $2 in a new 80x24 session $1, which becomes $sessione. The one before
# goes only after it, since the server ends with its last session and a new
# one may reach it dying; by its exact name ("="), not one it begins.
apri_sessione() {
    precedente=${sessione_aperta:-}
    sessione=$1
    sessione_aperta=$1
    tmux new-session -d -s "$sessione" -x 80 -y 24 "$2"
    if [ -n "$precedente" ]; then tmux kill-session -t "=$precedente"; fi
}

fine() {
    [ "$fallite" -eq 0 ] && exit 0
    echo "$fallite checks failed"
    exit 1
}
