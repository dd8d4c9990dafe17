#!/bin/bash
# Runs a Windows program with windows under Wine, on a display of its own that nobody sees. One at a time.
# usage: scripts/wine-display.sh PROGRAM.exe [ARGUMENT]...
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/folders.sh
. "$here/folders.sh"

mkdir -p "$THUDFORGE_CACHE"
exec 8>"$THUDFORGE_CACHE/wine-display-run.lock"
flock 8
folder=$(mktemp -d)
Xvfb -displayfd 3 -screen 0 1400x1000x24 -nolisten tcp -noreset 3>"$folder/display" >"$folder/log" 2>&1 8>&- &
server=$!
finish() {
    # What Wine leaves running ends by itself; the next run must not meet it with its display gone.
    WINEPREFIX=$THUDFORGE_CACHE/wine-display timeout 20 wineserver --wait 8>&- || true
    kill "$server" 2>/dev/null || true
    wait "$server" 2>/dev/null || true
    rm -rf "$folder"
}
trap finish EXIT

for _ in $(seq 100); do
    [ -s "$folder/display" ] && break
    kill -0 "$server" 2>/dev/null || break
    sleep 0.1
done
if [ ! -s "$folder/display" ]; then
    cat "$folder/log" >&2
    echo "There is no display to run it on: Xvfb did not start" >&2
    exit 1
fi
display=:$(tr -d '[:space:]' <"$folder/display")
THUDFORGE_WINE_DISPLAY=$display "$here/wine-run.sh" "$@" 8>&-
