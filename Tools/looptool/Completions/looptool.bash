# bash completion for looptool: the commands, and the options that its --help names.
_looptool() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "$(looptool --help |
            sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p') --help --version" -- "$word")
    elif [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(looptool "${COMP_WORDS[1]}" --help 2>/dev/null |
            grep -o -E -- '^ +(-[a-z],)?--[a-z0-9-]+' | tr -d ' ' | tr ',' '\n')" -- "$word")
    else
        case $before in
        --kind) mapfile -t COMPREPLY < <(compgen -W 'lop2 tsl lop' -- "$word") ;;
        --format) mapfile -t COMPREPLY < <(compgen -W 'wav aiff flac raw svg png' -- "$word") ;;
        --bits) mapfile -t COMPREPLY < <(compgen -W '16 24 float' -- "$word") ;;
        --tempo | --bars) mapfile -t COMPREPLY < <(compgen -W 'auto' -- "$word") ;;
        esac
    fi
}
complete -o default -o filenames -F _looptool looptool
