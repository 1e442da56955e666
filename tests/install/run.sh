#!/usr/bin/env bash
# run: installs into an empty folder, moves it, and builds the consumer against it in both ways.
#
#   $1  project folder   $2  build folder   $3  compiler
#
# Moving shows that nothing of the build or of the first place is remembered.
set -euo pipefail
project=$1 build=$2 compiler=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/prefix"
prefix=$scratch/prefix
libraries=$(dirname "$(find "$prefix" -name libnmktoolbox.so)")

echo "--- find_package(nmktoolbox CONFIG)"
cmake -S "$project/tests/install" -B "$scratch/consumer" -G Ninja \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$scratch/consumer"
"$scratch/consumer/consumer" | diff -u "$project/tests/install/consumer.expected" -

echo "--- pkg-config nmktoolbox"
export PKG_CONFIG_PATH=$libraries/pkgconfig
# shellcheck disable=SC2046  # a list of options
"$compiler" -std=c++20 "$project/tests/install/main.cpp" -o "$scratch/by_pkg_config" \
    $(pkg-config --cflags --libs nmktoolbox) "-Wl,-rpath,$libraries"
"$scratch/by_pkg_config" | diff -u "$project/tests/install/consumer.expected" -

echo "--- formulas in public headers are compiled without fused multiply-adds"
case $(uname -m) in
    x86_64) with_fused=(-O2 -mfma) ;;
    *) with_fused=(-O2) ;;
esac
has_fused() { objdump -d "$1" | grep -qE 'v?fn?m(add|sub|la|ls)[0-9a-z]*[[:space:]]'; }
# shellcheck disable=SC2046  # a list of options
compile_distance() {
    "$compiler" -std=c++20 "${with_fused[@]}" $(pkg-config --cflags nmktoolbox) "$@" \
        -c "$project/tests/install/distance.cpp" -o "$scratch/distance.o"
}
compile_distance -ffp-contract=fast
has_fused "$scratch/distance.o" ||
    { echo "this compiler would not fuse distance.cpp; the check shows nothing" >&2; exit 1; }
compile_distance
if has_fused "$scratch/distance.o"; then
    echo "pkg-config --cflags lacks -ffp-contract=off" >&2
    exit 1
fi
cmake -S "$project/tests/install" -B "$scratch/consumer" \
    -DCMAKE_CXX_FLAGS="${with_fused[*]}" >/dev/null
cmake --build "$scratch/consumer" --target distance
if has_fused "$(find "$scratch/consumer" -name 'distance.cpp.o')"; then
    echo "the CMake package does not hand on -ffp-contract=off" >&2
    exit 1
fi

echo "--- a fault of a consumer's own code is thrown"
if [ -z "$("$compiler" --version | grep -i clang)" ]; then
    # shellcheck disable=SC2046  # a list of options
    compile_fault() {
        "$compiler" -std=c++20 -O2 "$project/tests/install/fault.cpp" -o "$scratch/fault" \
            $(pkg-config --cflags --libs nmktoolbox) "-Wl,-rpath,$libraries" "$@"
    }
    compile_fault -fno-non-call-exceptions
    if (ulimit -c 0; "$scratch/fault") >/dev/null 2>&1; then
        echo "fault.cpp is translated without the option; the check shows nothing" >&2
        exit 1
    fi
    compile_fault
    "$scratch/fault" | diff -u "$project/tests/install/fault.expected" -
    cmake -S "$project/tests/install" -B "$scratch/consumer" -DCMAKE_CXX_FLAGS=-O2 >/dev/null
    cmake --build "$scratch/consumer" --target fault
    "$scratch/consumer/fault" | diff -u "$project/tests/install/fault.expected" -
fi

echo "--- the tool, from where it was moved to"
if readelf -d "$prefix"/bin/nmk "$libraries"/*.so | grep -F "$build"; then
    echo "the installed tree remembers the build folder" >&2
    exit 1
fi
"$prefix/bin/nmk" --version

echo "--- manual pages and completion"
pages=(nmk)
for folder in "$project"/app/commands/*/; do pages+=("nmk-$(basename "$folder")"); done
for page in "${pages[@]}"; do
    command=${page#nmk}
    # shellcheck disable=SC2086  # none for the general page
    "$prefix/bin/nmk" help ${command#-} --man | cmp - "$prefix/share/man/man1/$page.1"
    if command -v groff >/dev/null; then
        [ -z "$(groff -man -ww -z "$prefix/share/man/man1/$page.1" 2>&1)" ] ||
            { echo "groff warns about $page.1" >&2; exit 1; }
    else
        echo "groff is not installed: $page.1 is not formatted"
    fi
done
bash -c "source '$prefix/share/bash-completion/completions/nmk'; complete -p nmk"
"$prefix/bin/nmk" completion zsh | cmp - "$prefix/share/zsh/vendor-completions/_nmk"
"$prefix/bin/nmk" completion fish | cmp - "$prefix/share/fish/vendor_completions.d/nmk.fish"

echo "--- the Debian package"
(cd "$scratch" && cpack --config "$build/CPackConfig.cmake" -B "$scratch/package" >"$scratch/log" 2>&1) ||
    { cat "$scratch/log"; exit 1; }
dpkg-deb --contents "$scratch"/package/*.deb >"$scratch/contents"
for file in usr/bin/nmk usr/include/nmktoolbox.h nmktoolbox-config.cmake nmktoolbox.pc \
    libnmktoolbox.so "${pages[@]/%/.1}" usr/share/bash-completion/completions/nmk \
    usr/share/zsh/vendor-completions/_nmk usr/share/fish/vendor_completions.d/nmk.fish; do
    grep -q "/$file" "$scratch/contents" || { echo "the package lacks $file" >&2; exit 1; }
done
