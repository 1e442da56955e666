#!/usr/bin/env bash
# include_arrows: app may include source's headers, source platform's, never the other way.
#
# Also: a subsystem includes another one only where the table below says that it builds on it, and
# nothing includes a platform library past its declaration in platform/CMakeLists.txt.
set -euo pipefail
cd "$1"
shopt -s nullglob
status=0
complain() { echo "$*" >&2; status=1; }

# Subsystem, and the subsystems that it builds on.
declare -A builds_on=(
    [exact]=""
    [collections]=""
    [runtime]=""
    [ordering]="collections runtime"
    [search]=""
    [solver]="files"
    [files]=""
    [uniqueid]="collections"
    [curves]="uniqueid collections"
)

found=$(grep -rnE '#include *[<"](nmktoolbox|order|levels|commands)[/.]' platform || true)
[ -z "$found" ] || complain "platform includes what leans on it:"$'\n'"$found"

found=$(grep -rnE '#include *[<"][^>"]*app/' include source platform || true)
[ -z "$found" ] || complain "the library includes the tool:"$'\n'"$found"

for folder in source/*/ include/nmktoolbox/*/; do
    subsystem=$(basename "$folder")
    [ "${builds_on[$subsystem]+known}" ] ||
        { complain "$folder: not in the table of $0; add it with what it builds on"; continue; }
    while IFS= read -r line; do
        other=$(sed -E 's|.*[<"]nmktoolbox/([a-z]+)[/.].*|\1|' <<<"$line")
        case " $subsystem export ${builds_on[$subsystem]} " in
            *" $other "*) ;;
            *) complain "$line: $subsystem does not build on $other" ;;
        esac
    done < <(grep -rnE '#include *[<"]nmktoolbox/' "$folder" || true)
done

# Platform libraries: what NEEDS says, followed to the end.
needs_of() {
    sed -nE "s/^nmk_platform_library\\($1( .*)?\\)\$/\\1/p" platform/CMakeLists.txt |
        sed -E 's/ LINK(_PRIVATE)? .*//; s/NEEDS//'
}
reach_of() {
    local library
    for library in $(needs_of "$1"); do
        echo "$library"
        reach_of "$library"
    done
}
for folder in platform/*/; do
    library=$(basename "$folder")
    allowed=" $library $(reach_of "$library" | tr '\n' ' ') "
    while IFS= read -r line; do
        other=$(sed -E 's|.*[<"]([a-z]+)/.*|\1|' <<<"$line")
        [ -d "platform/$other" ] || continue
        case "$allowed" in
            *" $other "*) ;;
            *) complain "$line: $library does not declare that it needs $other" ;;
        esac
    done < <(grep -rnE '#include *[<"][a-z]+/' "$folder" || true)
done
exit $status
