#!/bin/sh
# Runs a Windows program under Wine, without windows and in a Wine folder of its own, made at the first use.
# usage: scripts/wine-run.sh PROGRAM.exe [ARGUMENT]...
set -eu
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=scripts/folders.sh
. "$here/folders.sh"

WINEPREFIX=$THUDFORGE_CACHE/wine
WINEDEBUG=-all
WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
export WINEPREFIX WINEDEBUG WINEDLLOVERRIDES
unset DISPLAY WAYLAND_DISPLAY

if [ ! -e "$WINEPREFIX/thudforge-ready" ]; then
    mkdir -p "$THUDFORGE_CACHE"
    exec 9>"$THUDFORGE_CACHE/wine.lock"
    flock 9
    if [ ! -e "$WINEPREFIX/thudforge-ready" ]; then
        rm -rf "$WINEPREFIX"
        wineboot --init >"$THUDFORGE_CACHE/wineboot.log" 2>&1 </dev/null 9>&-
        wineserver --wait 9>&-
        : >"$WINEPREFIX/thudforge-ready"
    fi
    exec 9>&-
fi
exec wine "$@"
