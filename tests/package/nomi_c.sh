#!/bin/sh
# The C interface's names: the functions velmarin.h declares are the
# velmarin_ names of the list the export checks read, no more and no fewer.
# usage: nomi_c.sh LIST HEADER
set -e
lista="$1"; header="$2"
temp=$(mktemp -d); trap 'rm -rf "$temp"' EXIT
grep '^velmarin_' "$lista" | sort >"$temp/lista"
grep -o 'VELMARIN_CALL velmarin_[a-z_]*(' "$header" | sed 's/VELMARIN_CALL //; s/(//' | sort >"$temp/header"
diff -u "$temp/lista" "$temp/header" || { echo "the export list and velmarin.h differ"; exit 1; }
echo "$(wc -l <"$temp/lista") names, declared and listed"
