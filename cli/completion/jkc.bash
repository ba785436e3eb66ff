# Completion of jkc for bash. What there is to offer the program itself tells.
_jkc() {
    local words=() offered i word
    # bash makes three words of --to=sjis.
    for ((i = 1; i <= COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        if [[ ${#words[@]} -gt 0 && ${words[-1]} == --* && ($word == = || ${COMP_WORDS[i - 1]} == =) ]]; then
            words[-1]+=$word
        else
            words+=("$word")
        fi
    done
    mapfile -t offered < <("$1" complete "${words[@]}" 2>/dev/null)

    COMPREPLY=("${offered[@]:1}")
    COMPREPLY=("${COMPREPLY[@]%%$'\t'*}")
    if [[ ${words[-1]} == --*=* && $COMP_WORDBREAKS == *=* ]]; then
        COMPREPLY=("${COMPREPLY[@]#*=}")
    fi
    case ${offered[0]-} in
    files) compopt -o default ;;
    folders) compopt -o dirnames ;;
    esac
    if [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]]; then
        compopt -o nospace
    fi
} && complete -F _jkc jkc
