# For the scripts in scripts/: sourced, not run. Sets root (the project's folder) and goes there.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root"
jobs=$(nproc)

say() { printf '\n== %s\n' "$*"; }

die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# configure PRESET [CMAKE OPTION...]
configure() {
    local preset=$1 options=()
    shift
    if [ ! -e "build/$preset/CMakeCache.txt" ]; then
        # Only scripts/test needs GoogleTest, and says so; a build that has the tests keeps them.
        options+=(-DJKC_BUILD_TESTS=OFF)
    fi
    if command -v ccache >/dev/null; then
        options+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake --preset "$preset" "${options[@]}" "$@"
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    cmake --build --preset "$preset" --parallel "$jobs" ${1+--target "$@"}
}
