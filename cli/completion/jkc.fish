# Completion of jkc for fish. What there is to offer the program itself tells.
function __jkc_complete
    set -l words (commandline -opc)
    set -l typed (commandline -ct)
    set -l offered (command $words[1] complete $words[2..-1] "$typed" 2>/dev/null)
    set -l option (string match -r -- '^--[^=]+=' "$typed")
    set -l path (string replace -- "$option" '' "$typed")
    switch "$offered[1]"
        case files
            set path (__fish_complete_path "$path")
        case folders
            set path (__fish_complete_directories "$path" '')
        case '*'
            set path
    end
    for word in "$option"$path $offered[2..-1]
        echo -- $word
    end
end
complete -c jkc -f -a '(__jkc_complete)'
