# Completion of varlo-render's arguments in bash.

_varlo_render() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} names line
    COMPREPLY=()

    case $previous in
        -o | --load-state | --save-state | --plugin)
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            compopt -o filenames 2>/dev/null
            return ;;
        --preset)
            mapfile -t COMPREPLY < <(compgen -f -X '!*.cvpreset' -- "$word"; compgen -d -- "$word")
            compopt -o filenames 2>/dev/null
            return ;;
        --editor-png)
            mapfile -t COMPREPLY < <(compgen -f -X '!*.png' -- "$word"; compgen -d -- "$word")
            compopt -o filenames 2>/dev/null
            return ;;
        --bits)
            mapfile -t COMPREPLY < <(compgen -W "16 24 32f" -- "$word")
            return ;;
        --rate)
            mapfile -t COMPREPLY < <(compgen -W "44100 48000 88200 96000" -- "$word")
            return ;;
        --set | --automate)
            # The names of the plug-in's parameters, each in the first column of the list.
            names=$("${COMP_WORDS[0]}" --list 2>/dev/null | while read -r line _; do echo "$line="; done | tail -n +2)
            mapfile -t COMPREPLY < <(compgen -W "$names" -- "$word")
            compopt -o nospace 2>/dev/null
            return ;;
        --block | --tail | --editor-size)
            return ;;
    esac

    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "-o --plugin --load-state --preset --set --automate --save-state --tail
            --block --rate --editor-png --editor-size --mono --bits --list --json --check-display --quiet --help
            --version" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames 2>/dev/null
    fi
}

complete -F _varlo_render varlo-render
