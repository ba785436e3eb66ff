#!/usr/bin/env bash
# lint.sh: mandoc and groff have nothing to say about the pages, and every page that they refer to is there.
set -uo pipefail
cd "$(dirname "$0")/../../docs/man" || exit 1
failures=0

for reference in $(grep -hoE '\\fB[A-Za-z0-9_\\-]+\\fR\([1-8]\)|^\.BR.*' -- *.[137] |
    grep -oE '[A-Za-z0-9_\\-]+"?\(? ?"?\(?[137]\)' | tr -d '\\" ' | sort -u); do
    page=${reference%(*}.${reference#*(}
    page=${page%)}
    case $page in
    iconv.1 | snprintf.3 | charsets.7) continue ;;
    esac
    if ! [ -e "$page" ] && ! { [[ $page == *.3 ]] && sed -n '/^\.SH NAME$/,/^\.SH/p' ./*.3 | grep -qw "${page%.3}"; }; then
        echo "there is no page $reference"
        failures=$((failures + 1))
    fi
done

for page in *.[137] */*.[137]; do
    command -v groff >/dev/null || break
    language=(-m "$(dirname "$page")") # its rules where lines may be broken, as man takes them
    [ "${language[1]}" != . ] || language=()
    if ! said=$(timeout 20 groff -Kutf8 "${language[@]}" -man -Tutf8 -ww "$page" 2>&1 >/dev/null) || [ -n "$said" ]; then
        echo "groff cannot cope with $page: $said"
        failures=$((failures + 1))
    fi
done

if command -v mandoc >/dev/null; then
    # A line of Japanese text has no spaces at which it could be broken.
    ! mandoc -Tlint -Wall -- *.[137] */*.[137] | grep -v '^mandoc: [a-z]*/.*: STYLE: input text line longer than 80 bytes' ||
        failures=$((failures + 1))
fi
[ $failures = 0 ] || exit 1
for tool in groff mandoc; do
    command -v $tool >/dev/null || { echo "SKIPPED, for there is no $tool"; exit 77; }
done
