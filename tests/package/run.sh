#!/bin/bash
# Installs the build into an empty prefix, moves the prefix (nothing in it may depend on its place), and
# builds and runs a consumer by find_package and by pkg-config.
# Usage: run.sh CMAKE GENERATOR BUILD_DIR WORK_DIR CC CXX
set -euo pipefail

cmake=$1 generator=$2 build=$3 work=$4 cc=$5 cxx=$6
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"

"$cmake" --install "$build" --prefix "$work/first" >"$work/install.log"
mv "$work/first" "$work/prefix"
libdir=$(dirname "$(find "$work/prefix" -name libjkc.so)")

echo "--- find_package"
"$cmake" -S "$here" -B "$work/consumer" -G "$generator" -DCMAKE_C_COMPILER="$cc" \
    -DCMAKE_PREFIX_PATH="$work/prefix" >"$work/configure.log"
"$cmake" --build "$work/consumer"
"$work/consumer/consumer_shared"
"$work/consumer/consumer_static"

echo "--- pkg-config"
export PKG_CONFIG_PATH=$libdir/pkgconfig
strict="-Wall -Wextra -pedantic -Werror"
# Unquoted on purpose: these are lists of options.
flags=$(pkg-config --cflags --libs jkc)
"$cc" -std=c99 $strict "$here/consumer.c" -o "$work/pc_c" $flags
"$cxx" -std=c++17 $strict "$here/consumer.cpp" -o "$work/pc_cxx" $flags
"$cc" -std=c99 $strict "$here/consumer.c" -o "$work/pc_c_static" $(pkg-config --cflags jkc) "$libdir/libjkc.a"
LD_LIBRARY_PATH=$libdir "$work/pc_c"
LD_LIBRARY_PATH=$libdir "$work/pc_cxx"
"$work/pc_c_static"

if [ -e "$work/prefix/bin/jkc" ]; then
    echo "--- the installed program"
    "$work/prefix/bin/jkc" --version
fi
