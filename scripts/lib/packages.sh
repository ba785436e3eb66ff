# For the scripts in scripts/: sourced after common.sh. Sees to the tools that a script needs.

# What tells that a Debian package, or the same from elsewhere, is there: a command or a file.
declare -A package_probe=(
    [cmake]=cmake
    [make]=make
    [g++]=g++
    [clang]=clang++
    [clang-format]=clang-format
    [clang-tidy]=clang-tidy
    [pkg-config]=pkg-config
    [gettext]=msgfmt
    [mandoc]=mandoc
    [po4a]=po4a
    [nlohmann-json3-dev]=/usr/include/nlohmann/json.hpp
    [libgtest-dev]=/usr/include/gtest/gtest.h
    [default-jdk-headless]=javac
    [debhelper]=dh
    [lintian]=lintian
    [debootstrap]=debootstrap
    [man-db]=man
    [zsh]=zsh
    [fish]=fish
    [junit4]=/usr/share/java/junit4.jar
    [libbenchmark-dev]=/usr/include/benchmark/benchmark.h
    [python3]=python3
    [python3-dev]=/usr/bin/python3-config
    [python3-cffi]=/usr/lib/python3/dist-packages/cffi
    [python3-setuptools]=/usr/lib/python3/dist-packages/setuptools
    [python3-pytest]=/usr/lib/python3/dist-packages/pytest
    [python3-wheel]=/usr/lib/python3/dist-packages/wheel
    [python3-pip]=/usr/lib/python3/dist-packages/pip
    [python3-build]=/usr/lib/python3/dist-packages/build
    [python3-pandas]=/usr/lib/python3/dist-packages/pandas
    [python3-dask]=/usr/lib/python3/dist-packages/dask
    [python3-distributed]=/usr/lib/python3/dist-packages/distributed
    [python3-fsspec]=/usr/lib/python3/dist-packages/fsspec
    [python3-charset-normalizer]=/usr/lib/python3/dist-packages/charset_normalizer
    [python3-chardet]=/usr/lib/python3/dist-packages/chardet
    [strace]=strace
    [valgrind]=valgrind
    [llvm]=llvm-cov
    [googletest]=/usr/src/googletest/CMakeLists.txt
    [musl-tools]=musl-gcc
    [g++-i686-linux-gnu]=i686-linux-gnu-g++
    [g++-aarch64-linux-gnu]=aarch64-linux-gnu-g++
    [g++-s390x-linux-gnu]=s390x-linux-gnu-g++
    [g++-mingw-w64-x86-64-posix]=x86_64-w64-mingw32-g++-posix
    [qemu-user]=qemu-s390x
    [wine]=wine
    [wine64]=/usr/lib/wine/wine64
    [doxygen]=doxygen
    [nkf]=nkf
    [python3-matplotlib]=/usr/lib/python3/dist-packages/matplotlib
    [locales]=/usr/share/i18n/locales/ja_JP
    [emscripten]=emcc
    [nodejs]=node
    [npm]=npm
    [chromium]=chromium
    [node-typescript]=tsc
    [libicu-dev]=/usr/include/unicode/ucnv.h
)

# missing_packages PACKAGE...: prints those that are not there, each once.
missing_packages() {
    local package probe
    for package in $(printf '%s\n' "$@" | sort -u); do
        probe=${package_probe[$package]}
        if [[ $probe == /* ]]; then
            [ -e "$probe" ] || echo "$package"
        else
            command -v "$probe" >/dev/null || echo "$package"
        fi
    done
}

# need_packages PACKAGE...: installs what is missing when run as root on Debian, else says what is.
need_packages() {
    local missing log
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    if ! command -v apt-get >/dev/null; then
        die "please install what these Debian packages hold, and start again: ${missing[*]}"
    fi
    if [ "$(id -u)" != 0 ]; then
        die "these packages are missing. Install them and start again:
    sudo apt-get install ${missing[*]}"
    fi

    say "Installing ${missing[*]}"
    log=$(mktemp)
    if ! install_packages "${missing[@]}" >"$log" 2>&1; then
        cat "$log" >&2
        die "could not install: ${missing[*]}"
    fi
    rm -f "$log"
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -eq 0 ] || die "still missing after the installation: ${missing[*]}"
}

# want_packages PACKAGE...: installs what is missing if it can; things go on without it.
want_packages() {
    (need_packages "$@" 2>/dev/null) || say "Going on without $*"
}

install_packages() {
    export DEBIAN_FRONTEND=noninteractive
    local install=(apt-get install -y --no-install-recommends "$@")
    # A machine that never updated knows no packages; one that did long ago knows old ones, which are
    # no longer there to be fetched. In both cases an update comes first.
    if ! apt-cache show "$@" >/dev/null 2>&1; then
        apt-get update && "${install[@]}"
    else
        "${install[@]}" || { apt-get update && "${install[@]}"; }
    fi
}
