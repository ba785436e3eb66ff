#!/usr/bin/env bash
# options.sh PROGRAM: the page of each command describes the options that its help does, and no others. So do
# translations. The page of detect has the rules of the decision in their order.
set -uo pipefail
export LC_ALL=C
program=$1
failures=0

# The options in a text of pages, as -x or --xy, each once.
options_of() {
    sed 's/\\-/-/g; s/\\f.//g' | grep -oE "(^|[^A-Za-z0-9&#;_.-])--?[A-Za-z0-9][a-z-]*" |
        grep -oE -- '--?[A-Za-z0-9][a-z-]*' | sort -u
}

fail() {
    printf '%s\n' "$*"
    failures=$((failures + 1))
}

pages=$(dirname "$0")/../../docs/man
commands=$("$program" help | sed -n 's/^  jkc \([a-z]*\)  .*/\1/p')
[ -n "$commands" ] || fail "'jkc help' lists no commands"
for command in $commands; do
    help=$("$program" help "$command" | grep '^  -' | grep -oE '(^  |, )--?[A-Za-z0-9][a-z-]*' | sed 's/^  //; s/^, //' | sort -u)
    for page in "$pages"/jkc-"$command".1 "$pages"/*/jkc-"$command".1; do
        # Only what stands there is about this command; examples run other programs, too.
        section=$(sed -n '/^\.SH \(OPTIONS\|オプション\)$/,/^\.SH/p' "$page")
        described=$(sed -n '/^\.T[PQ]/{n;p}' <<<"$section" | options_of)
        lacking=$(comm -23 <(echo "$help") <(echo "$described"))
        [ -z "$lacking" ] || fail "$page lacks" $lacking
        for option in $(comm -13 <(echo "$help") <(options_of <<<"$section")); do # other names are not in the help
            if [[ $("$program" "$command" "$option" 2>&1 </dev/null) == *"unknown option"* ]]; then
                fail "$page has $option, which 'jkc $command' does not know"
            fi
        done
    done
done

rules=$(sed -nE 's/^    \{"(.*)", [a-z0-9_]+\},$/\1/p' "$pages/../../judge/decision.cpp")
[ "$(wc -l <<<"$rules")" -gt 10 ] || fail "the rules of judge/decision.cpp are not where they were"
for page in "$pages"/jkc-detect.1 "$pages"/*/jkc-detect.1; do
    told=$(sed -n '/^\.SH \(RULES\|規則\)$/,/^\.SH/p' "$page" | sed -n '/^\.TP/{n;p}' |
        sed 's/^\.BR\? //; s/" ", " /\n/g; s/"//g; s/\\f[BI]//g; s/\\f[PR], /\n/g; s/\\f[PR]//g; s/ ", " /\n/g; s/\\-/-/g')
    difference=$(diff <(echo "$rules") <(echo "$told")) || fail "< rules, > in $page:" "$difference"
done
exit $((failures > 0))
