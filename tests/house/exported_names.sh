#!/usr/bin/env bash
# exported_names: the shared library offers its own names and no others.
#
#   $1  project folder   $2  libnmktoolbox.so
#
# co_hash is what the sets ask of an element; each element type brings its own. Weak symbols are
# templates and inline functions that the language makes every library carry.
set -euo pipefail
found=$(nm -DC --defined-only "$2" | awk '$2 ~ /^[TDBR]$/' | cut -d' ' -f3- |
    grep -vE '^((vtable|typeinfo|typeinfo name|VTT|guard variable|non-virtual thunk|virtual thunk)( for| to) )?(_?nmk|g_transcode_encoding$|dbgLevel_|co_hash\(|e_ptrm_uid_stamp$|operator(<<|>>)\(CArchive&, nmk|Serialize\(utString&, CArchive&\))' || true)
[ -z "$found" ] || { echo "exported, but not ours:"$'\n'"$found" >&2; exit 1; }
