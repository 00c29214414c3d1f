# fish completion for looptool: the commands, and the options that its --help names.
function __looptool_commands
    looptool --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\)  *\(.*\)/\1\t\2/p'
end
function __looptool_options
    set -l words (commandline -opc)
    looptool $words[2] --help 2>/dev/null | string match -r -a -- '--[a-z0-9-]+' | sort -u
end
# The last whole word before the cursor.
function __looptool_after
    test (commandline -opc)[-1] = $argv[1]
end
complete -c looptool -n '__fish_is_first_arg' -f -a '(__looptool_commands)'
complete -c looptool -n 'not __fish_is_first_arg; and string match -q -- "-*" (commandline -ct)' \
    -f -a '(__looptool_options)'
complete -c looptool -n '__looptool_after --kind' -f -a 'lop2 tsl lop'
complete -c looptool -n '__looptool_after --format' -f -a 'wav aiff flac raw svg png'
complete -c looptool -n '__looptool_after --bits' -f -a '16 24 float'
complete -c looptool -n '__looptool_after --tempo; or __looptool_after --bars' -a auto
