# shellcheck shell=bash disable=SC2154
# setup.sh: what ./nmk and ./check share; sourced, with `root` set to the project's folder.
#
# Installs the packages of cmake/packages.txt that are missing, configures a preset and builds it.
# All messages go to standard error. What the compilers say goes to build/<preset>.log, which is
# shown only when a step fails. Every function ends the script with 1 when it cannot go on.

say() {
    [ -n "${nmk_quiet:-}" ] || printf '%s\n' "$*" >&2
}

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# packages_of ROLE...: their packages, each once.
packages_of() {
    local roles=" $* "
    awk -v roles="$roles" '!/^#/ && index(roles, " " $1 " ") && !seen[$2]++ { print $2 }' \
        "$root/cmake/packages.txt"
}

# missing_of ROLE...: those of their packages that are not installed, for this machine's processor
# unless the name of the package ends with that of another.
missing_of() {
    local package native
    native=$(dpkg --print-architecture)
    for package in $(packages_of "$@"); do
        # shellcheck disable=SC2016  # dpkg-query expands them
        dpkg-query -W -f='${Architecture} ${db:Status-Status}\n' "$package" 2>/dev/null |
            grep -qxE "(all|$native|${package#*:}) installed" || printf '%s\n' "$package"
    done
}

# need ROLE...: installs what is missing, as root or through sudo.
need() {
    local missing command
    command -v dpkg-query >/dev/null || { need_without_packages; return; }
    missing=$(missing_of "$@" | tr '\n' ' ')
    missing=${missing% }
    [ -n "$missing" ] || return 0
    as_root "Missing: $missing" "apt-get update && apt-get install -y --no-install-recommends $missing"
    say "Installing $missing ..."
    mkdir -p "$root/build"
    command+=(env DEBIAN_FRONTEND=noninteractive)
    # shellcheck disable=SC2086  # a list of names
    { "${command[@]}" apt-get update &&
        "${command[@]}" apt-get install -y --no-install-recommends $missing; } \
        </dev/null >"$root/build/packages.log" 2>&1 ||
        { cat "$root/build/packages.log" >&2; fail "The packages could not be installed."; }
}

# need_architecture NAME: lets the packages of another processor be installed beside this one's.
need_architecture() {
    local command
    dpkg --print-foreign-architectures | grep -qx "$1" && return
    as_root "Packages for $1 cannot be installed yet" "dpkg --add-architecture $1"
    "${command[@]}" dpkg --add-architecture "$1" || fail "dpkg --add-architecture $1 failed."
}

# as_root WHY WHAT: sets `command` to what runs a command as root; where that cannot be done, says why
# it is needed and what to type.
as_root() {
    command=()
    [ "$(id -u)" = 0 ] && return
    sudo_works || fail "$1. Run this once, then call again:
    su -c '$2'"
    command=(sudo)
}

# sudo asks for a password only where somebody can type one.
sudo_works() {
    command -v sudo >/dev/null || return 1
    sudo -n true 2>/dev/null || { [ -t 0 ] && [ -t 2 ] && sudo -v; }
}

# On a system without Debian's packages: stop only when a program is missing.
need_without_packages() {
    local program
    for program in cmake ninja c++; do
        command -v "$program" >/dev/null ||
            fail "$program is missing; cmake/packages.txt lists what the project needs."
    done
}

# build PRESET TARGET [CMAKE_OPTION...]: configures where that is needed, then builds the target.
build() {
    local preset=$1 target=$2 folder="$root/build/$1" log="$root/build/$1.log"
    shift 2
    mkdir -p "$folder"
    exec 9>"$root/build/$preset.lock"
    flock 9
    # A build folder that came here from another place remembers that place: begin anew.
    if ! grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        rm -rf "$folder"
    fi
    if [ ! -e "$folder/build.ninja" ] || [ "$root/CMakePresets.json" -nt "$folder/build.ninja" ] ||
        [ $# -gt 0 ]; then
        (cd "$root" && cmake --preset "$preset" "$@") </dev/null >"$log" 2>&1 9>&- ||
            show_and_fail "$log" "Configuring $preset failed"
    fi
    cmake --build "$folder" --target "$target" --parallel "$(nproc)" \
        </dev/null >"$log" 2>&1 9>&- || show_and_fail "$log" "Building $preset failed"
    exec 9>&-
}

show_and_fail() {
    cat "$1" >&2
    fail "$2; the lines above stand in $1."
}
