#!/usr/bin/env bash
# fresh_machine.sh: proves that ./nmk and ./check set up a minimal Debian 12 by themselves.
#
# Makes a minimal tree with debootstrap in a temporary folder, clones what is committed into it,
# with the folder ../shared beside it where that is present, and runs both commands there through
# chroot. The tree is removed afterwards. Needs root and the network; downloaded packages of the
# minimal tree are kept in ~/.cache/nmktoolbox. Mounts live in a namespace of their own, so that
# they are gone before anything is removed.
set -euo pipefail

root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
suite=bookworm

if [ "$(id -u)" != 0 ]; then
    echo "check --fresh needs root: sudo ./check --fresh" >&2
    exit 1
fi
if [ -n "$(git -C "$root" status --porcelain)" ]; then
    echo "Note: only what is committed is tried." >&2
fi

tree=$(mktemp -d "${TMPDIR:-/tmp}/nmk-fresh.XXXXXX")
chmod 755 "$tree"
trap 'rm -rf --one-file-system "$tree"' EXIT
cache=${XDG_CACHE_HOME:-$HOME/.cache}/nmktoolbox
mkdir -p "$cache"

# The mirror that this machine uses, so that a machine behind one works too.
# shellcheck disable=SC2016  # for apt-get to fill in
mirror=$(apt-get indextargets --format '$(CODENAME) $(REPO_URI)' "Created-By: Packages" 2>/dev/null |
    awk -v suite="$suite" '$1 == suite { print $2; exit }')
mirror=${mirror:-http://deb.debian.org/debian}

echo "Making a minimal Debian from $mirror ..." >&2
debootstrap --variant=minbase --cache-dir="$cache" "$suite" "$tree" "$mirror" >"$cache/log" 2>&1 ||
    { cat "$cache/log" >&2; exit 1; }

# How this machine reaches the network: names, proxies, and how strict apt is about dates.
cp -L /etc/resolv.conf /etc/hosts "$tree/etc/"
apt-config dump | grep -E '^Acquire::((http|https)::Proxy|Check-(Date|Valid-Until))' \
    >"$tree/etc/apt/apt.conf.d/90machine" || true

mkdir -p "$tree/work"
git clone --quiet --no-hardlinks "$root" "$tree/work/nmktoolbox"
if [ -d "$root/../shared" ]; then
    cp -rL "$root/../shared" "$tree/work/shared"
fi

# in_tree COMMAND: in the project's folder of the tree, with nothing of this machine's environment
# but its proxies. ccache and the like are not there: this is the time that a newcomer waits.
in_tree() {
    # shellcheck disable=SC2016  # for the inner shell to fill in
    unshare --mount bash -c '
        mount -t proc proc "$1/proc" && mount --rbind /dev "$1/dev" &&
        exec env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
            http_proxy="${http_proxy:-}" https_proxy="${https_proxy:-}" \
            chroot "$1" bash -c "cd /work/nmktoolbox && $2"' in_tree "$tree" "$1" </dev/null
}

timed() {
    local begun=$SECONDS
    echo "--- $1" >&2
    in_tree "$1" || { echo "check --fresh: failed: $1" >&2; exit 1; }
    echo "--- $((SECONDS - begun)) s" >&2
}

timed "./nmk order samples/cover_plate.drl --svg cover.svg && test -s cover.svg"
timed "./nmk --version"
timed "./check"
echo "check --fresh: passed"
