#!/bin/sh
# The demonstration ends by itself after 100 presses, each in ground where
# the four points put it (a scale and shift per axis: East from x, North from
# y through the first and third points).

HOST=$1
. "$(dirname "$0")/comune.sh"

timeout 120 "$HOST" demo >"$temp/demo" 2>&1
verifica "the demo ends by itself and succeeds" test $? -eq 0
verifica "the demo digitizes both corners of the limits in the selection dialog" \
    test "$(grep -c '^limits: ".*" digitized at' "$temp/demo")" -eq 2
verifica "the limits taken are the corners pressed" grep -q '^limits: x 0 to 10000, y 0 to 10000$' "$temp/demo"
verifica "the demo digitizes four points" test "$(grep -c '^point' "$temp/demo")" -eq 4
verifica "the demo prints 100 presses" test "$(grep -c '^press' "$temp/demo")" -eq 100

# point N: ground East E North N, digitized at x X y Y
# press  N: x X y Y -> East E North N, button B NAME
awk '
/^point 1:/ { e1 = $5; n1 = $7; x1 = $11; y1 = $13 }
/^point 3:/ { e3 = $5; n3 = $7; x3 = $11; y3 = $13 }
/^press/ {
    x = $4; y = $6; e = $9; n = $11
    sub(",", "", n)
    ae = e1 + (e3 - e1) * (x - x1) / (x3 - x1)
    an = n1 + (n3 - n1) * (y - y1) / (y3 - y1)
    if ((e - ae) ^ 2 > 1e-6 || (n - an) ^ 2 > 1e-6) { print "off: " $0; bad++ }
    seen[x " " y]++
}
END {
    if (x3 == x1 || y3 == y1) { print "no calibration points"; exit 1 }
    if (length(seen) != 100) { print length(seen) " distinct points, not 100"; exit 1 }
    exit bad > 0
}' "$temp/demo" >"$temp/scarti"
verifica "every press lies where the calibration maps it, at 100 distinct points" test $? -eq 0
cat "$temp/scarti"
fine
