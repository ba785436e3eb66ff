#!/bin/bash
# Compares lists of exported names with what there is, both ways. Usage:
#   check.sh library LIBRARY LIST...   the lists against what the shared library exports
#   check.sh header  HEADER  LIST...   the lists against what the header declares
set -euo pipefail
export LC_ALL=C

lists=("${@:3}")
case $1 in
library)
    # Absolute symbols (A) are the names of version nodes.
    found=$(nm -D --defined-only "$2" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }')
    ;;
header)
    found=$(sed -nE 's/^JKC_API (extern )?(const )?[A-Za-z0-9_]+( const)?[ *]+([A-Za-z0-9_]+).*/\4/p' "$2")
    # A declaration that the pattern above does not know must not slip through.
    if [ "$(grep -c '^JKC_API ' "$2")" != "$(wc -l <<<"$found")" ]; then
        echo "some declarations of $2 were not understood"
        exit 1
    fi
    ;;
*)
    echo "unknown comparison: $1"
    exit 2
    ;;
esac

for list in "${lists[@]}"; do
    if ! grep -v '^#' "$list" | sort -uc; then
        echo "$list is not sorted, or holds a name twice"
        exit 1
    fi
done
listed=$(grep -hv '^#' "${lists[@]}" | sort)
difference=$(comm -3 <(echo "$listed") <(sort <<<"$found") | sed -E 's/^([^\t])/listed only: \1/; s/^\t/found only: /')
if [ -n "$difference" ]; then
    echo "$difference"
    exit 1
fi
echo "$(wc -l <<<"$listed") names, all the same"
