#!/bin/bash
# The Windows module exports its two entry points and nothing else.
# usage: tests/checks/windows-exports.sh MODULE
set -euo pipefail
shown=$(x86_64-w64-mingw32-objdump -p "$1" | awk '
    /^\[Ordinal\/Name Pointer\] Table/ { table = 1; next }
    /^$/ { table = 0 }
    table && /^[[:space:]]*\[/ { print $NF }' | sort | tr '\n' ' ')
if [ "$shown" != "VSTPluginMain main " ]; then
    echo "Symbols shown to hosts: $shown"
    exit 1
fi
