#!/bin/bash
# names.txt lists every name that the shared library exports and the version that it came with, so that none comes or
# goes unseen. Usage:
#   names.sh check LIBRARY VERSION_SCRIPT   it is what the library exports, and what the public headers declare
#   names.sh update LIBRARY                 makes it so
set -euo pipefail
export LC_ALL=C
here=$(dirname "$0")
names=$here/names.txt
of_java='^(Java_|_jjkc_|_jni_)'

if [[ $2 == *.dll ]]; then
    exported=$("${OBJDUMP:-objdump}" -p "$2" | sed -nE 's/^\t\[ *[0-9]+\] (\+base\[ *[0-9]+\] )?( *[0-9a-f]{4} )?([A-Za-z_0-9]+)$/\3/p' | sort)
else # A: a version node
    exported=$("${NM:-nm}" -D --defined-only "$2" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort)
fi
listed=$(cut -d ' ' -f 1 "$names" | sort)
case $1 in
update)
    if ! grep -qE "$of_java" <<<"$exported"; then # built without Java, whose names stay
        exported=$(sort <(echo "$exported") <(grep -E "$of_java" <<<"$listed"))
    fi
    old=$(sort "$names")
    join -a 1 -e "$("$here/../../scripts/version")" -o 0,2.2 <(echo "$exported") <(echo "$old") >"$names"
    ;;
check)
    declared=$(sed -nE 's/^        ([A-Za-z0-9_]+);$/\1/p' "$3" | grep -vE "$of_java" | sort)
    if ! grep -q Java_ "$3"; then
        listed=$(grep -vE "$of_java" <<<"$listed")
    fi
    diff <(echo "$listed") <(echo "$exported") || { echo "< listed in names.txt, > exported"; exit 1; }
    diff <(grep -vE "$of_java" <<<"$listed") <(echo "$declared") || { echo "< exported, > declared"; exit 1; }
    echo "$(wc -l <<<"$listed") names, all the same"
    ;;
esac
