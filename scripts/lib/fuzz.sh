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

# fuzz_coverage TARGET...: regions, functions, lines and branches of the library that the seeds and the corpora run.
fuzz_coverage() {
    local target profiles=() programs=()
    configure coverage -DJKC_BUILD_TESTS=ON
    build coverage jkc_fuzz
    for target in "$@"; do
        programs+=("build/coverage/bin/jkc_fuzz_$target")
        profiles+=("build/coverage/$target.profraw")
        find build/fuzz/seeds "build/fuzz/corpus/$target" -type f |
            JKC_FUZZ_DIR=build/coverage LLVM_PROFILE_FILE=${profiles[-1]} "${programs[-1]}"
    done
    llvm-profdata merge -o build/coverage/all.profdata "${profiles[@]}"
    llvm-cov report -instr-profile=build/coverage/all.profdata "${programs[0]}" "${programs[@]/#/-object=}" \
        -ignore-filename-regex='/cli/|/tests/|/usr/'
}
