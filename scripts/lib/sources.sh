# For the scripts in scripts/: sourced after common.sh. Lists our C and C++ files.

source_folders() {
    local folder
    for folder in include core tables judge convert io jni java cli tests bench; do
        if [ -d "$folder" ]; then
            echo "$folder"
        fi
    done
}

formatted_sources() {
    find $(source_folders) -name '*.h' -o -name '*.c' -o -name '*.cpp' | sort
}

# What a build has command lines for; headers are looked at through these.
tidied_sources() {
    grep -o '"file": "[^"]*"' build/clang/compile_commands.json | cut -d '"' -f 4 | grep '\.cpp$' | sort -u
}
