#!/usr/bin/env bash
# print_results: the results of the tool for the samples and for a table of generated problems.
#
#   $1      project directory
#   $2...   the command that runs the tool: nmk, or an emulator and nmk
#
# Two processors, or one with fewer instructions, must print the same bytes.
set -euo pipefail
project=$1
shift
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$project"

# Whole numbers of a linear congruential generator, which awk computes without rounding.
generated_problems() {
    awk 'function next_number() { state = (state * 16807) % 2147483647; return state % 2001 - 1000 }
        function row(kind, count, line, i) {
            line = kind
            for (i = 0; i < count; ++i) line = line "," next_number() / 128
            print line
        }
        BEGIN {
            state = 20
            for (i = 0; i < 500; ++i) {
                row("polynomial", 3); row("polynomial", 4); row("polynomial", 5)
                row("angles1", 3); row("angles2", 6); row("angles3", 9); row("angles4", 6)
                row("angles4-one", 6); row("angles5", 7); row("angles6", 5)
                print "normal," next_number() / 256
            }
        }'
}

order() {
    echo "--- order $*"
    "${nmk[@]}" order "$@" --quiet -o "$scratch/ordered.csv" && cat "$scratch/ordered.csv"
}

nmk=("$@")
for type in shortest closest concentric radial x diag1 one-way; do
    order samples/holes.csv --type "$type"
done
order samples/holes.csv --level itemsorter=0
order samples/slots.csv
order samples/cover_plate.drl

echo "--- route"
"${nmk[@]}" route samples/workshop.map --start 3,36 --goal 92,36 --json
"${nmk[@]}" route samples/clamps.csv --start 0,5 --goal 8,8 --goal-kind moving-line --gradient 0.5 \
    --forward --json

echo "--- solve"
"${nmk[@]}" solve --csv samples/problems.csv --json
generated_problems >"$scratch/problems.csv"
"${nmk[@]}" solve --csv "$scratch/problems.csv" --json
