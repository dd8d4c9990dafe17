#!/bin/sh
# Runs a Windows program under Wine, in a Wine folder of its own, made at the first use. It has no windows, unless
# wine-display.sh gives it a display, and then another such folder: Wine keeps to what it began with.
# usage: scripts/wine-run.sh PROGRAM.exe [ARGUMENT]...
set -eu
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=scripts/folders.sh
. "$here/folders.sh"

unset DISPLAY WAYLAND_DISPLAY
WINEPREFIX=$THUDFORGE_CACHE/wine
if [ -n "${THUDFORGE_WINE_DISPLAY:-}" ]; then
    WINEPREFIX=$THUDFORGE_CACHE/wine-display
    DISPLAY=$THUDFORGE_WINE_DISPLAY
    export DISPLAY
fi
WINEDEBUG=-all
WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
export WINEPREFIX WINEDEBUG WINEDLLOVERRIDES

if [ ! -e "$WINEPREFIX/thudforge-ready" ]; then
    mkdir -p "$THUDFORGE_CACHE"
    exec 9>"$WINEPREFIX.lock"
    flock 9
    if [ ! -e "$WINEPREFIX/thudforge-ready" ]; then
        rm -rf "$WINEPREFIX"
        wineboot --init >"$THUDFORGE_CACHE/wineboot.log" 2>&1 </dev/null 9>&-
        # There is no window manager on that display to wait for.
        wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >>"$THUDFORGE_CACHE/wineboot.log" 2>&1 9>&-
        wineserver --wait 9>&-
        : >"$WINEPREFIX/thudforge-ready"
    fi
    exec 9>&-
fi
exec wine "$@"
