#!/bin/bash
# The Windows programs import from libraries that are part of Windows only.
# usage: tests/checks/windows-imports.sh FILE...
set -euo pipefail
failed=0
for file in "$@"; do
    imports=$(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/^[[:space:]]*DLL Name: //p' | sort -u)
    if [ -z "$imports" ]; then
        echo "$file: no import table found"
        failed=1
    fi
    while read -r library; do
        echo "${file##*/} imports $library"
        case ${library^^} in
        ADVAPI32.DLL | COMCTL32.DLL | COMDLG32.DLL | GDI32.DLL | KERNEL32.DLL | MSVCRT.DLL | OLE32.DLL | SHELL32.DLL) ;;
        USER32.DLL | WININET.DLL) ;;
        *)
            echo "$library is not part of Windows"
            failed=1
            ;;
        esac
    done <<<"$imports"
done
exit "$failed"
