#!/usr/bin/env bash
# umbrella_headers: every public header is included by its umbrella, every umbrella by nmktoolbox.h.
set -euo pipefail
cd "$1/include"
status=0
for folder in nmktoolbox/*/; do
    umbrella=${folder%/}.h
    [ -e "$umbrella" ] || { echo "missing: include/$umbrella" >&2; status=1; continue; }
    diff -u --label "what $umbrella should include" --label "what it includes" \
        <(find "$folder" -name '*.h' | sed -E 's|.*|#include <&>|' | LC_ALL=C sort) \
        <(grep '^#include' "$umbrella" | sed -E 's| *//.*||' | tr '"' '<' | LC_ALL=C sort) >&2 || status=1
    grep -qF "#include <$umbrella>" nmktoolbox.h ||
        { echo "include/nmktoolbox.h lacks $umbrella" >&2; status=1; }
done
exit $status
