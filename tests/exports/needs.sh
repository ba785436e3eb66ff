#!/bin/bash
# The shared library needs the C library and nothing else at run time, and exported data can be replaced
# as the linker intends (no -Bsymbolic).
set -euo pipefail
dynamic=$(LC_ALL=C readelf -d "$1")
needed=$(sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p' <<<"$dynamic")
soname=$(sed -nE 's/.*\(SONAME\).*\[(.*)\]/\1/p' <<<"$dynamic")
echo "needs: $needed; is: $soname"
[ "$needed" = libc.so.6 ]
[ "$soname" = libjkc.so.2 ]
! grep -q SYMBOLIC <<<"$dynamic"
