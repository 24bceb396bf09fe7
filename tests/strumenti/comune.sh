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
    fi
}

contiene() { grep -q -- "$2" "$1"; }

# Starts velmarin-sim with the given options and sets $dispositivo to its
# device path, once it is printed.
avvia_sim() {
    "$SIM" "$@" >"$temp/sim.out" 2>"$temp/sim.err" &
    figli="$figli $!"
    for _ in $(seq 50); do
        dispositivo=$(head -n1 "$temp/sim.out" 2>/dev/null)
        [ -n "$dispositivo" ] && return 0
        sleep 0.1
    done
    echo "velmarin-sim printed no device"
    return 1
}

# Reads up to $2 bytes from the device $1 for at most $3 seconds into $4.
leggi_dispositivo() {
    stty -F "$1" raw -echo 2>/dev/null
    timeout "$3" head -c "$2" <"$1" >"$4" 2>/dev/null
    return 0
}

fine() {
    [ "$fallite" -eq 0 ] && exit 0
    echo "$fallite checks failed"
    exit 1
}
