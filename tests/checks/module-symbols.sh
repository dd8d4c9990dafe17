#!/bin/bash
# The module shows a host its two entry points and nothing else, and needs no library but the system's own.
# usage: tests/checks/module-symbols.sh MODULE
set -euo pipefail
module=$1
failed=0

shown=$(nm -D --defined-only "$module" | awk '{print $NF}' | sort | tr '\n' ' ')
if [ "$shown" != "VSTPluginMain main " ]; then
    echo "Symbols shown to hosts: $shown"
    failed=1
fi
needed=$(readelf -d "$module" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
echo "needs: $(tr '\n' ' ' <<<"$needed")"
while read -r library; do
    case $library in
    libc.so.* | libm.so.* | ld-linux*.so.*) ;;
    libxcb.so.1 | libxcb-shm.so.0) ;; # the system's, the same for all that show windows
    *)
        echo "Needs $library, which a host may have in another version"
        failed=1
        ;;
    esac
done <<<"$needed"
if readelf -d "$module" | grep -qE '\((RPATH|RUNPATH|TEXTREL)\)'; then
    echo "Holds a library path of the machine it was built on, or code that must be patched when loaded"
    failed=1
fi
exit "$failed"
