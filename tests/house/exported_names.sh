#!/usr/bin/env bash
# exported_names: a shared library offers its own names and no others.
#
#   $1  libnmktoolbox.so
#
# co_hash is what the sets ask of an element; each element type brings its own. Weak symbols are
# templates and inline functions that the language makes every library carry.
set -euo pipefail
names=$(nm -DC --defined-only "$1" | awk '$2 ~ /^[TDBR]$/' | cut -d' ' -f3-)
[ -n "$names" ] || { echo "$1: exports nothing" >&2; exit 1; }
own='^((vtable|typeinfo|typeinfo name|VTT|guard variable|non-virtual thunk|virtual thunk)( for| to) )?(_?nmk|TriangleFile(Flue|TTR)(::|$)|ncmTimer::|operator<<\(std::ostream&, ncmTimer const&\)$|g_transcode_encoding$|dbgLevel_|co_hash\(|e_ptrm_uid_stamp$|operator(<<|>>)\(CArchive&, nmk|Serialize\(utString&, CArchive&\)|serialize\(CObject&, CObject\*\*\)$)'
if grep -vE "$own" <<<"$names" >&2; then
    echo "$1: the names above are exported, but not the library's own" >&2
    exit 1
fi
