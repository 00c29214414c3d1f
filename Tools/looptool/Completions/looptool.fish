# fish completion for looptool: the commands, and the options that its --help names.
function __looptool_commands
    looptool --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\)  *\(.*\)/\1\t\2/p'
end
function __looptool_options
    set -l words (commandline -opc)
    looptool $words[2] --help 2>/dev/null | string match -r -a -- '--[a-z0-9-]+' | sort -u
end
complete -c looptool -n '__fish_is_first_arg' -f -a '(__looptool_commands)'
complete -c looptool -n 'not __fish_is_first_arg; and string match -q -- "-*" (commandline -ct)' \
    -f -a '(__looptool_options)'
