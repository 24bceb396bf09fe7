#!/bin/sh
# The C interface's names: the list that the export checks read, the
# functions velmarin.h declares, and what the built library exports under
# the velmarin_ prefix are one and the same set.
# usage: nomi_c.sh LIST HEADER LIBRARY
set -e
lista="$1"; header="$2"; libreria="$3"
temp=$(mktemp -d); trap 'rm -rf "$temp"' EXIT
grep -v '^#' "$lista" | sort >"$temp/lista"
grep -o 'VELMARIN_CALL velmarin_[a-z_]*(' "$header" | sed 's/VELMARIN_CALL //; s/(//' | sort >"$temp/header"
nm -D --defined-only "$libreria" | awk '$2 == "T" && $3 ~ /^velmarin_/ {print $3}' | sort >"$temp/esportati"
diff -u "$temp/lista" "$temp/header" || { echo "the list and velmarin.h differ"; exit 1; }
diff -u "$temp/lista" "$temp/esportati" || { echo "the list and the library's exports differ"; exit 1; }
echo "$(wc -l <"$temp/lista") names, declared and exported"
