# For the scripts in scripts/: sourced after common.sh. Lists our C and C++ files.

formatted_sources() {
    find . \( -path ./build -o -path ./bindings/python/build \) -prune -o \( -name '*.h' -o -name '*.c' -o -name '*.cpp' \) -print | sort
}

# What a build has command lines for; headers are looked at through these.
tidied_sources() {
    grep -o '"file": "[^"]*"' build/clang/compile_commands.json | cut -d '"' -f 4 | grep '\.cpp$' | sort -u
}
