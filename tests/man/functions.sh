#!/usr/bin/env bash
# functions.sh INTERFACE COMPILER...: each name that the library exports is in a page of section 3, functions of
# jkc.h under NAME of one, where man finds them; and what stands under SYNOPSIS is what the headers declare.
set -uo pipefail
export LC_ALL=C
names=$("$1" names | cut -d ' ' -f 1)
shift
pages=$(dirname "$0")/../../docs/man
failures=0

fail() {
    printf '%s\n' "$*"
    failures=$((failures + 1))
}

# section NAME PAGE: what stands there, without macros and fonts
section() {
    sed -n "/^\.SH $1\$/,/^\.SH/{/^\.SH/d;p}" "$2" | sed 's/\\f.//g; s/\\-/-/g; s/^\.BR\? //'
}

under_name=$(for page in "$pages"/*.3; do section NAME "$page" | tr '\n' ' ' | sed 's/ - .*//' | grep -oE '[a-z_0-9]+'; done | sort)
[ -z "$(uniq -d <<<"$under_name")" ] || fail "in two pages:" $(uniq -d <<<"$under_name")
functions=$(grep -E '^[a-z]' <<<"$names" | sort)
difference=$(diff <(echo "$functions") <(grep -vxE 'libjkc|jkc_tables|jkc_internal' <<<"$under_name")) ||
    fail "< exported, > under NAME in docs/man/*.3:" "$difference"
words=$(sed 's/\\f.//g' "$pages"/*.3 | grep -oE '[A-Za-z0-9_]+' | sort -u)
for name in $(grep '^_' <<<"$names" | grep -vE '^_(jjkc|jni)_|_size$'); do
    grep -qxF -- "$name" <<<"$words" || fail "$name is in no page"
done

# A declaration that differs from that of the header is an error.
for page in "$pages"/*.3 "$pages"/*/*.3; do
    { section SYNOPSIS "$page"; section 書式 "$page"; } | grep -vE '^\.|^extern' | "$@" -fsyntax-only - ||
        fail "$page: SYNOPSIS is not what the header declares"
done
exit $((failures > 0))
