# For the scripts in scripts/: sourced after common.sh. Builds and runs the fuzz targets.

fuzz_targets() { sed -nE 's/^set\(fuzz_targets (.*)\)$/\1/p' tests/fuzz/CMakeLists.txt; }

build_fuzzers() {
    configure fuzz -DJKC_BUILD_TESTS=ON -DJKC_WERROR=ON
    build fuzz jkc_fuzz
    rm -rf build/fuzz/seeds
    python3 tests/fuzz/seeds.py build/fuzz/seeds
}

# fuzz TARGET LIBFUZZER_OPTION...
fuzz() {
    local corpus=build/fuzz/corpus/$1 found=build/fuzz/found
    mkdir -p "$corpus" "$found"
    # A stream is a file that is made anew for each input: in memory, if there is such a place.
    TMPDIR=${TMPDIR:-/dev/shm} JKC_FUZZ_DIR=$found "build/fuzz/bin/jkc_fuzz_$1" "$corpus" build/fuzz/seeds \
        -dict=tests/fuzz/dictionary.txt -artifact_prefix="$found/$1-" -max_len=2048 -timeout=20 -print_final_stats=1 \
        "${@:2}"
}
