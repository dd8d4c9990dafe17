#!/bin/bash
# `cmake --install` and `cpack` put every file where it belongs, and what they installed runs.
# usage: tests/checks/linux-package.sh BUILD-FOLDER
set -euo pipefail
build=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0
expect_files() {
    local root=$1 file
    for file in lib/vst/ThudForge.so bin/thudforge share/doc/thudforge/README.md share/doc/thudforge/LICENSE \
        share/doc/thudforge/architecture.md share/doc/thudforge/examples/kick-pattern.mid; do
        if [ ! -f "$root/$file" ]; then
            echo "$2 has no $file"
            failed=1
        fi
    done
}

cmake --install "$build" --prefix "$folder/installed" >/dev/null
expect_files "$folder/installed" "cmake --install"
"$folder/installed/bin/thudforge" check >/dev/null || {
    echo "The installed program does not find the installed module"
    failed=1
}

cpack --config "$build/CPackConfig.cmake" -B "$folder/packages" >"$folder/log" 2>&1 || {
    cat "$folder/log"
    exit 1
}
mkdir "$folder/deb" "$folder/tgz"
dpkg-deb -x "$folder"/packages/thudforge_*_amd64.deb "$folder/deb"
expect_files "$folder/deb/usr" "the .deb"
depends=$(dpkg-deb -f "$folder"/packages/thudforge_*_amd64.deb Depends)
for library in libsndfile1 libxcb1 libxcb-shm0; do
    if [[ $depends != *$library* ]]; then
        echo "The .deb does not ask for $library: $depends"
        failed=1
    fi
done
tar -xf "$folder"/packages/thudforge-*.tar.gz -C "$folder/tgz" --strip-components=1
expect_files "$folder/tgz" "the .tar.gz"
exit "$failed"
