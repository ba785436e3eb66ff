#!/bin/bash
# The shared library needs the C library and nothing else at run time, and exported data can be replaced
# as the linker intends (no -Bsymbolic).
set -euo pipefail
if [[ $1 == *.dll ]]; then
    needed=$("${OBJDUMP:-objdump}" -p "$1" | sed -nE 's/.*DLL Name: (.*)/\1/p' | sort | xargs)
    echo "needs: $needed"
    [ "$needed" = "KERNEL32.dll msvcrt.dll" ]
    exit
fi
dynamic=$(LC_ALL=C readelf -d "$1")
needed=$(sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p' <<<"$dynamic")
soname=$(sed -nE 's/.*\(SONAME\).*\[(.*)\]/\1/p' <<<"$dynamic")
echo "needs: $needed; is: $soname"
[[ $needed = libc.so.6 || $needed = libc.so ]] # of glibc, of musl
[ "$soname" = libjkc.so.2 ]
! grep -q SYMBOLIC <<<"$dynamic"
