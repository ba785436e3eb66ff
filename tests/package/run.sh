#!/bin/bash
# What users do with libjkc. Usage: run.sh installed|kinds CMAKE GENERATOR SOURCE_DIR BUILD_DIR WORK_DIR CC CXX
#   installed  the build, installed into a prefix that is moved then (nothing in it may depend on its place): consumers
#              by find_package and by pkg-config, and every header on its own
#   kinds      libjkc in the tree of another project, then the static and the shared library alone
set -euo pipefail

what=$1 cmake=$2 generator=$3 source=$4 build=$5 work=$6 cc=$7 cxx=$8
here=$(cd "$(dirname "$0")" && pwd)
strict="-Wall -Wextra -pedantic -Werror"
# These two are used unquoted: they are lists of options.
c="$cc -std=c99 $strict"
cpp="$cxx -std=c++17 $strict"
rm -rf "$work"
mkdir -p "$work"

# install_build BUILD_DIR: into $work/prefix, by way of another place.
install_build() {
    rm -rf "$work/first" "$work/prefix"
    "$cmake" --install "$1" --prefix "$work/first" >"$work/install.log"
    mv "$work/first" "$work/prefix"
    export PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name jkc.pc)")
    libdir=$(dirname "$PKG_CONFIG_PATH")
    export LD_LIBRARY_PATH=$libdir
}

# configure BUILD_DIR OPTION...: the consumers' project, with few words.
configure() {
    "$cmake" -S "$here" -B "$1" -G "$generator" -DCMAKE_C_COMPILER="$cc" "${@:2}" >"$work/configure.log"
}

# consume CONSUMER...: by find_package there are these alone, and one by pkg-config.
consume() {
    rm -rf "$work/consumer"
    configure "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix"
    "$cmake" --build "$work/consumer" >"$work/build.log"
    diff <(cd "$work/consumer" && ls -d consumer_*) <(printf '%s\n' "$@")
    for consumer in "$@"; do
        "$work/consumer/$consumer"
    done
    $c "$here/consumer.c" -o "$work/pc_c" $(pkg-config --cflags --libs jkc)
    "$work/pc_c"
}

case $what in
installed)
    install_build "$build"
    consume consumer_jkc consumer_jkc_static
    $cpp "$here/consumer.cpp" -o "$work/pc_cxx" $(pkg-config --cflags --libs jkc)
    "$work/pc_cxx"
    $c "$here/consumer.c" -o "$work/pc_c_static" $(pkg-config --cflags jkc) "$libdir/libjkc.a"
    "$work/pc_c_static"
    (cd "$work/prefix/include" && find . -name '*.h') | while read -r header; do
        $c -I "$work/prefix/include" -fsyntax-only -x c - <<<"#include <${header#./}>"
        $cpp -I "$work/prefix/include" -fsyntax-only -x c++ - <<<"#include <${header#./}>"
    done
    if [ -e "$work/prefix/bin/jkc" ]; then
        "$work/prefix/bin/jkc" --version
        # The moved program finds its translations.
        if [ -e "$work"/prefix/share/locale/ja/LC_MESSAGES/jkc.mo ]; then
            LC_ALL=C.UTF-8 LANGUAGE=ja "$work/prefix/bin/jkc" help | grep 使い方
        fi
    fi
    ;;
kinds)
    # All from one tree, so that the sources are compiled once.
    tree=$work/tree
    launcher=$(sed -nE 's/^CMAKE_CXX_COMPILER_LAUNCHER:[A-Z]+=//p' "$build/CMakeCache.txt")
    configure "$tree" -DJKC_SOURCE="$source" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS=-O0 \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher"
    "$cmake" --build "$tree" >"$work/build.log"
    "$cmake" --install "$tree" --prefix "$work/own" >"$work/install.log"
    diff <(cd "$work/own" && find . ! -type d | sort) <(printf './bin/consumer_%s\n' jkc jkc_static)

    for kind in STATIC SHARED; do
        other=$([ $kind = STATIC ] && echo SHARED || echo STATIC)
        configure "$tree" -DJKC_INSTALL=ON -DJKC_BUILD_CLI=ON -DJKC_BUILD_$kind=ON -DJKC_BUILD_$other=OFF
        "$cmake" --build "$tree" >"$work/build.log"
        install_build "$tree"
        consume "$([ $kind = STATIC ] && echo consumer_jkc_static || echo consumer_jkc)"
        "$work/prefix/bin/jkc" --version
        # The moved program finds its translations.
        if [ -e "$work"/prefix/share/locale/ja/LC_MESSAGES/jkc.mo ]; then
            LC_ALL=C.UTF-8 LANGUAGE=ja "$work/prefix/bin/jkc" help | grep 使い方
        fi
    done
    ! configure "$work/none" -DJKC_SOURCE="$source" -DJKC_BUILD_SHARED=OFF -DJKC_BUILD_STATIC=OFF 2>"$work/none.log"
    grep -q "both off" "$work/none.log"
    ;;
esac
