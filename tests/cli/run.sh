#!/usr/bin/env bash
# run.sh PROGRAM CASES: runs the program jkc as the file of cases tells, and compares what comes of it. In that file:
#
#   # comment
#   case WHAT IS TRUE
#   file NAME CONTENT   a file that is there when a command of the case begins
#   $ COMMAND           for sh, in a directory of its own, where jkc is the program; further lines are indented
#   > LINE              of standard output; >| is one without a line feed
#   ! LINE              of standard error, where DIR is the directory
#   ? STATUS            if it is not 0
#   = NAME CONTENT      a file that is new, or other than before
#   - NAME              a file that is gone
#   let NAME CONTENT    what {NAME} stands for from here on; texts.def has those of all files
#   needs COMMAND       without whose success the rest is skipped
#
# Except in commands, \xHH and the escapes of printf are bytes, and [3*ab] is ababab.
#
# Commands that match the regular expression JKC_LEAVE_OUT are left out: they need what the system does not have.
set -u
program=$1
cases=$2
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
export LC_ALL=C JKC=$program
declare -A names
about=""
command=""
failures=0
ran=0
left_out=0

expand() {
    local text=$1 repeated i
    while [[ $text =~ \{([a-z0-9]+)\} ]]; do
        text=${text/"${BASH_REMATCH[0]}"/"${names[${BASH_REMATCH[1]}]}"}
    done
    while [[ $text =~ \[([0-9]+)\*([^]]*)\] ]]; do
        repeated=
        for ((i = 0; i < BASH_REMATCH[1]; ++i)); do repeated+=${BASH_REMATCH[2]}; done
        text=${text/"${BASH_REMATCH[0]}"/"$repeated"}
    done
    printf %b "$text"
}

# write_file DIRECTORY "NAME CONTENT"
write_file() {
    local name=${2%% *}
    expand "${2:${#name}+1}" >"$1/$(expand "$name")"
}

begin_command() {
    command=$1
    rm -rf "$root/wanted" "$root/found"
    mkdir "$root/wanted" "$root/found"
    cp -r "$root/files" "$root/wanted/work"
    cp -r "$root/files" "$root/found/work"
    touch "$root/wanted/out" "$root/wanted/err"
    echo 0 >"$root/wanted/status"
}

finish_command() {
    [ -n "$command" ] || return 0
    if [[ -n ${JKC_LEAVE_OUT-} && $command =~ $JKC_LEAVE_OUT ]]; then
        left_out=$((left_out + 1))
        command=
        return
    fi
    ran=$((ran + 1))
    # What started the tests may ignore signals, as nohup does.
    (
        cd "$root/found/work" || exit
        env --default-signal sh -c "jkc() { \"\$JKC\" \"\$@\"; }; $command" </dev/null >../out 2>../err
        echo $? >../status
    )
    sed -Ei "s|([A-Z]:)?$root/found/work|DIR|g" "$root/found/err"
    if ! diff -rua --no-dereference "$root/wanted" "$root/found" >"$root/differences"; then
        printf '\n%s: %s\n$ %s\n' "$cases" "$about" "$command"
        sed "s|$root/||g" "$root/differences" | cat -v
        failures=$((failures + 1))
    fi
    command=
}

while IFS= read -r line; do
    rest=${line#* }
    case $line in
    '  '*) command+=$'\n'$line ;;
    '> '* | '>') expand "${line:2}\n" >>"$root/wanted/out" ;;
    '>| '*) expand "$rest" >>"$root/wanted/out" ;;
    '! '*) expand "$rest\n" >>"$root/wanted/err" ;;
    '? '*) echo "$rest" >"$root/wanted/status" ;;
    '= '*) write_file "$root/wanted/work" "$rest" ;;
    '- '*) rm "$root/wanted/work/$(expand "$rest")" ;;
    '' | '#'*) ;;
    *)
        finish_command
        case $line in
        '$ '*) begin_command "$rest" ;;
        'case '*)
            about=$rest
            rm -rf "$root/files"
            mkdir "$root/files"
            ;;
        'file '*) write_file "$root/files" "$rest" ;;
        'let '*) names[${rest%% *}]=${rest#* } ;;
        'needs '*)
            sh -c "$rest" >"$root/needs" 2>&1 </dev/null || { echo "$cases: skipped without $rest" && exit 77; }
            ;;
        *) echo "not understood: $line" && exit 1 ;;
        esac
        ;;
    esac
done < <(cat "$(dirname "$cases")/texts.def" "$cases")
finish_command
echo "$cases: $ran commands, $failures failures, $left_out left out"
[ $((ran)) -gt 0 ] || exit 77
[ "$failures" = 0 ]
