#!/usr/bin/env bash
# The library exports its fourteen functions and nothing else, and has no thread-local storage.
# Arguments: library, expected names, the nm of the library's machine.
set -euo pipefail

library=$1 nm=$3
expected=$(sed -n 's/^ *\(LOP[A-Za-z]*\)$/\1/p' "$2" | sort)
case $library in
*.dll)
    found=$(x86_64-w64-mingw32-objdump -p "$library" |
        sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^[[:space:]]\{1,\}\[.*[[:space:]]\([^[:space:]]*\)$/\1/p' | sort)
    imports=$(x86_64-w64-mingw32-objdump -p "$library" | sed -n 's/^.*DLL Name: //p' |
        grep -viE '^(kernel32|msvcrt|shell32|ole32|user32|advapi32|version|shlwapi|dbghelp|api-ms-.*|ucrtbase)\.dll$' || true)
    if [ -n "$imports" ]; then
        echo "needs more than system DLLs: $imports"
        exit 1
    fi
    ;;
*)
    found=$("$nm" -D --defined-only "$library" | awk '{ print $3 }' | sort)
    if readelf -lW "$library" | grep -q '^ *TLS '; then
        echo "has thread-local storage, which a host may have used up"
        exit 1
    fi
    ;;
esac
diff <(echo "$expected") <(echo "$found")
symbols=$(sed -n 's/^ \(LOP[A-Za-z]*\)@Base .*$/\1/p' "$(dirname "$2")/symbols" | sort)
diff <(echo "$expected") <(echo "$symbols")
