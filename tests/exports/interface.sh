#!/bin/bash
# interface.txt lists what the shared library exports: the version that it came with and its C declaration or, for Java, its
# name. So nothing comes, goes or changes its parameters unseen. Usage:
#   interface.sh check LIBRARY DECLARATIONS   it is what the library exports, and what the public headers declare
#   interface.sh update LIBRARY DECLARATIONS  makes it so
#   interface.sh names                        lists each name and its version
# DECLARATIONS is written by cmake/Exports.cmake.
set -euo pipefail
export LC_ALL=C
here=$(dirname "$0")
interface=$here/interface.txt
of_java='^(Java_|_jjkc_|_jni_)'

names_of() { sed -E 's/ *[[(].*//; s/.*[ *]//'; }
listed() { cut -d ' ' -f 2- "$interface"; }
names() { paste -d ' ' <(listed | names_of) <(cut -d ' ' -f 1 "$interface"); }

if [ "$1" = names ]; then
    names
    exit
fi
if [[ $2 == *.dll ]]; then
    exported=$("${OBJDUMP:-objdump}" -p "$2" | sed -nE 's/^\t\[ *[0-9]+\] (\+base\[ *[0-9]+\] )?( *[0-9a-f]{4} )?([A-Za-z_0-9]+)$/\3/p' | sort)
else # A: a version node
    exported=$("${NM:-nm}" -D --defined-only "$2" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort)
fi
if grep -qE "$of_java" <<<"$exported"; then
    java=$(grep -E "$of_java" <<<"$exported")
else # built without, whose names stay
    java=$(listed | grep -E "$of_java")
    exported=$(sort <(echo "$exported") <(echo "$java"))
fi
declared=$(sort "$3" <(echo "$java"))
case $1 in
update)
    now=$("$here/../../scripts/version")
    old=$(names)
    while read -r declaration; do
        name=$(names_of <<<"$declaration")
        version=$(awk -v name="$name" '$1 == name { print $2 }' <<<"$old")
        echo "${version:-$now} $declaration"
    done <<<"$declared" >"$interface"
    ;;
check)
    diff <(listed | names_of | sort) <(echo "$exported") || { echo "< listed in interface.txt, > exported"; exit 1; }
    diff <(listed) <(echo "$declared") || { echo "< listed in interface.txt, > declared"; exit 1; }
    echo "$(wc -l <"$interface") names, all the same"
    ;;
esac
