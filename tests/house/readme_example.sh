#!/usr/bin/env bash
# readme_example: README shows examples/order_holes.cpp and its output as they are.
#
# The first block marked cpp is the program; the block after it is what it prints. That the program
# prints so is the business of the test examples.order_holes.
set -euo pipefail
cd "$1"
# block N: the text of the Nth fenced block.
block() { awk -v wanted="$1" '/^```/ { if (inside) inside = 0; else { inside = 1; n++ }; next }
    inside && n == wanted' README.md; }
first_cpp=$(awk '/^```/ { if (inside) inside = 0; else { inside = 1; n++; if ($0 == "```cpp") { print n; exit } } }' README.md)
[ -n "$first_cpp" ] || { echo "README.md shows no program" >&2; exit 1; }
diff -u examples/order_holes.cpp <(block "$first_cpp")
diff -u examples/order_holes.expected <(block $((first_cpp + 1)))
