#!/bin/bash
# Builds and runs the example, and compares what it wrote with what iconv writes.
# Usage: example.sh JAVA JAR EXAMPLE SHIFT_JIS_TEXT OUTPUT
set -euo pipefail
"$1" -Xcheck:jni -cp "$2" "$3" "$4" "$5"
iconv -f CP932 -t UTF-8 "$4" | tr -d '\r' | cmp - "$5"
