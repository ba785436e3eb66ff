#!/usr/bin/env bash
# encodings.sh PROGRAM: what jkc_encodings(7) says to be written and read, in all languages, is what the program writes and
# reads. Each table is converted at once, a line for each row.
set -uo pipefail
export LC_ALL=C
program=$1
pages=$(dirname "$0")/../../docs/man
pages=("$pages"/jkc_encodings.7 "$pages"/*/jkc_encodings.7)
lines=$(sed 's/\\-/-/g' "${pages[@]}")
failures=0
checked=0

# bytes KIND CODE: a code as the tables show it, whose letter is the end of an escape sequence, in hexadecimal digits
bytes() {
    local code=$2
    case $1/$code in
    */-) ;;
    JIS*/I*) echo "1B2849${code:1}1B2842" ;;
    JIS*/J*) echo "1B284A${code:1}1B2842" ;;
    JIS*/D*) echo "1B242844${code:1}1B2842" ;;
    JIS*/O*) echo "1B24284F${code:1}1B2842" ;;
    JIS*/P*) echo "1B242850${code:1}1B2842" ;;
    JIS*/Q*) echo "1B242851${code:1}1B2842" ;;
    JIS*/????) echo "1B2442${code}1B2842" ;;
    *) echo "$code" ;;
    esac
}

# What the characters of the page are in UTF-8, in hexadecimal digits; nothing for a dash.
declare -A utf8=([-]=)
for point in $(grep -oE 'U\+[0-9A-F]+' <<<"$lines" | sort -u); do
    utf8[$point]=$(LC_ALL=C.UTF-8 printf "\\U${point#U+}" | od -An -v -tx1 | tr -d ' \n' | tr a-f A-F)
done

# convert FROM TO: lines of hexadecimal digits into such; what is lost is left out
convert() {
    printf '%b\n' "$(sed 's/../\\x&/g')" | "$program" convert --quiet --assume "$1" -t "$2" --on-loss=omit |
        od -An -v -tx1 | tr '\n' ' ' | sed 's/ 0a/\n/g' | tr -d ' ' | tr a-f A-F
}

# compare WHAT FROM TO: standard input has a name, a text and what it is to become in each line
compare() {
    local names=() texts=() wanted=() found i
    while IFS=: read -r name text becomes; do
        names+=("$name") texts+=("$text") wanted+=("$becomes")
    done
    mapfile -t found < <(printf '%s\n' "${texts[@]}" | convert "$2" "$3")
    for i in "${!names[@]}"; do
        checked=$((checked + 1))
        if [ "${wanted[i]}" != "${found[i]-}" ]; then
            echo "$1: ${names[i]} is ${wanted[i]:-nothing} in the page, ${found[i]:-nothing} from the program"
            failures=$((failures + 1))
        fi
    done
}

read -ra kinds <<<"$(grep -E '^ +SJIS +JIS ' <<<"$lines")"
for i in "${!kinds[@]}"; do
    compare "to ${kinds[i]}" UTF-8 "${kinds[i]}" < <(
        grep -E '^U\+[0-9A-F]+ ( *[A-Z]?[0-9A-F-]+){7}( |$)' <<<"$lines" | while read -r point codes; do
            read -ra codes <<<"$codes"
            echo "$point:${utf8[$point]}:$(bytes "${kinds[i]}" "${codes[i]}")"
        done
    )
done

# What stands in the table of codes that are read, and the pairs of the wave dash, of which either one is.
readings=$(
    grep -E '^(SJIS|JIS2?|EUC[123]?) +[A-Z]?[0-9A-F]+ +(U\+[0-9A-F]+|-)$' <<<"$lines"
    sed -nE 's/^([0-9A-F]{4}) +([0-9A-F]{4}) +(U\+[0-9A-F]+) .*(U\+[0-9A-F]+) .*/\1 \2 \3 \4/p' <<<"$lines" |
        while read -r jis sjis standard microsoft; do
            euc=$(printf %04X $((16#$jis | 0x8080)))
            printf '%s\n' "SJIS $sjis $microsoft" "JIS $jis $microsoft" "JIS2 $jis $microsoft" "EUC $euc $standard" \
                "EUC1 $euc $standard" "EUC2 $euc $microsoft" "EUC3 $euc $microsoft"
        done
)
for kind in "${kinds[@]}"; do
    compare "from $kind" "$kind" UTF-8 < <(
        grep "^$kind " <<<"$readings" | while read -r _ code point; do
            echo "$code:$(bytes "$kind" "$code"):${utf8[$point]}"
        done
    )
done

[ $checked -gt $((300 * ${#pages[@]})) ] || { echo "only $checked codes were found in the pages"; exit 1; }
exit $((failures > 0))
