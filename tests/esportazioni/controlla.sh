#!/bin/sh
# A built library's exports against the expected names (one a line, as
# c++filt prints them; # comments); a DLL imports only from system DLLs.
# Usage: controlla.sh elf LIBRARY NAMES_FILE... | pe DLL OBJDUMP NAMES_FILE...

set -e
tipo="$1"; libreria="$2"; shift 2
objdump=""
if [ "$tipo" = pe ]; then objdump="$1"; shift; fi
attesi=$(mktemp); trovati=$(mktemp)
trap 'rm -f "$attesi" "$trovati"' EXIT
sed 's/#.*//; s/[[:space:]]*$//; /^$/d' "$@" | sort -u >"$attesi"

if [ "$tipo" = elf ]; then
  nm -D --defined-only "$libreria" | awk '{print $NF}'
else
  # The export table: "[ n] name" lines after "[Ordinal/Name Pointer] Table".
  "$objdump" -p "$libreria" | awk '/\[Ordinal\/Name Pointer\] Table/ {t = 1; next}
                                   t && /^\t\[/ {print $NF; next} t {t = 0}'
fi | c++filt | sort -u >"$trovati"

if ! diff -u "$attesi" "$trovati"; then
  echo "$libreria: the exports differ from $* (- expected, + found)" >&2
  exit 1
fi
echo "$(wc -l <"$trovati") exported names as expected"

if [ "$tipo" = pe ]; then
  # The C++ runtime and winpthreads are linked in: only system DLLs remain.
  estranee=$("$objdump" -p "$libreria" | awk '/DLL Name:/ {print $3}' |
    grep -viE '^(kernel32|user32|gdi32|advapi32|setupapi|msvcrt)\.dll$' || true)
  if [ -n "$estranee" ]; then
    echo "$libreria imports from DLLs that are not Windows' own:" $estranee >&2
    exit 1
  fi
  echo "imports only from Windows system DLLs"
fi
