# Sourced by the tests that run the README's lines as written.
# blocco_leggimi README MARKER: the fenced block after the line
# "<!-- MARKER -->".
blocco_leggimi() {
    awk -v segno="<!-- $2 -->" '
        $0 == segno { dentro = 1; next }
        dentro && /^```/ { if (aperto) exit; aperto = 1; next }
        dentro && aperto { print }' "$1"
}
