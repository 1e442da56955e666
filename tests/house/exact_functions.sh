#!/usr/bin/env bash
# exact_functions: no result depends on functions of the C library that may differ in the last bit.
#
# platform/exactmath offers them with the same bits everywhere. Before it searches, the script shows
# with planted calls that it would find some.
set -euo pipefail
cd "$1"
names='exp|exp2|expm1|pow|sin|cos|tan|sincos|asin|acos|atan|atan2|sinh|cosh|tanh|asinh|acosh|atanh'
names+='|erf|erfc|cbrt|hypot|log|log2|log10|log1p|tgamma|lgamma'

# The library's own functions of such a name are members: .pow(, ->pow(, utMath::pow( are allowed.
calls_in() {
    sed -E 's@//.*@@; s@"([^"\\]|\\.)*"@""@g' "$1" |
        grep -nE "(^|[^A-Za-z0-9_.>:])((std)?::)?($names)f?l?[[:space:]]*\(" | sed "s|^|$1:|" || true
}

planted=$(mktemp)
trap 'rm -f "$planted"' EXIT
for call in 'std::pow(x, 0.5)' 'x = exp(y);' 'return ::sinf(x);' 'f(std::hypot (x, y))'; do
    echo "$call" >"$planted"
    [ -n "$(calls_in "$planted")" ] || { echo "$0 does not see: $call" >&2; exit 1; }
done

# utMath::pow takes powers of ten from a table; the toolbox asks for no others. Pictures of the tool
# may differ in a digit that is not drawn.
found=$(find include source platform app -path '*/draw/*' -prune -o \( -name '*.h' -o -name '*.cpp' \) -print |
    grep -v '/utMath\.' | sort | while IFS= read -r file; do
    calls_in "$file"
done)
[ -z "$found" ] ||
    { echo "take these from platform/exactmath:"$'\n'"$found" >&2; exit 1; }
