#!/usr/bin/env bash
# no_prints: the library never prints, exits or aborts; that is for its host to decide.
set -euo pipefail
cd "$1"
# Comments and texts in quotes are taken out first: they may name what the code must not do.
# One private operation writes a diagnosis on demand of the environment; it has a file of its own.
found=$(find include source -name '*.h' -o -name '*.cpp' |
    grep -v '/nmkFileDir_diagnosis.cpp$' | sort | while IFS= read -r file; do
    sed -E 's@"([^"\\]|\\.)*"@""@g; s@//.*@@' "$file" |
        grep -nE '\b(std::)?(cout|cerr|clog|wcout|wcerr|stdout|stderr)\b|\b(printf|fprintf|vprintf|puts|putchar|fputs|perror|exit|_exit|_Exit|quick_exit|abort|terminate)[[:space:]]*\(' |
        sed "s|^|$file:|" || true
done)
[ -z "$found" ] || { echo "the library must not print or end the process:"$'\n'"$found" >&2; exit 1; }
