#!/bin/bash
# `cpack` of the Windows build makes a .zip with every file where it belongs.
# usage: tests/checks/windows-package.sh BUILD-FOLDER
set -euo pipefail
build=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cpack --config "$build/CPackConfig.cmake" -B "$folder/packages" >"$folder/log" 2>&1 || {
    cat "$folder/log"
    exit 1
}
listing=$(cmake -E tar tf "$folder"/packages/thudforge-*-win64.zip)
failed=0
for file in lib/vst/ThudForge.dll bin/thudforge.exe doc/README.md doc/LICENSE doc/LICENSE-fonts.txt doc/manual.md doc/examples/kick-pattern.mid; do
    if ! grep -q "/$file\$" <<<"$listing"; then
        echo "The .zip has no $file"
        failed=1
    fi
done
exit "$failed"
