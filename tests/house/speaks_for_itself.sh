#!/usr/bin/env bash
# speaks_for_itself: no file sends its reader to a document that does not stand in the tree.
set -euo pipefail
cd "$1"
# Brackets keep the patterns from finding themselves.
found=$(grep -rnIiE --exclude-dir=build --exclude-dir=.git --exclude-dir=.cache \
    '\b(the|this) [s]pec(ification)?\b|[s]pec\.md|\b[P]arts? [0-9]+\.[0-9]+|\b[i]ssue #?[0-9]+|\.\./[s]hared/(spec|design|style|reference)' \
    . || true)
[ -z "$found" ] || { echo "say the thing itself instead:"$'\n'"$found" >&2; exit 1; }
