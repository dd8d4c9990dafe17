# shellcheck shell=bash
# Runs the steps of demo.sh and test.sh: shows what goes on and how long it took. To be sourced.

# step TITLE LOG COMMAND...: runs a command with its output in a log file. On a terminal the last line of the log is
# shown while it runs. A command that fails has the end of its log printed.
step() {
    local title=$1 log=$2 started=$SECONDS status=0 watcher=
    shift 2
    if [ -t 1 ]; then
        printf '    %s ...' "$title"
        (
            while sleep 1; do
                printf '\r\033[K    %s ... %s' "$title" "$(tail -n 1 "$log" 2>/dev/null | tr -d '\r' | cut -c 1-60)"
            done
        ) &
        watcher=$!
    fi
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if [ -n "$watcher" ]; then
        kill "$watcher" 2>/dev/null
        wait "$watcher" 2>/dev/null || true
        printf '\r\033[K'
    fi
    if [ "$status" -eq 0 ]; then
        printf '    %s: %d s\n' "$title" $((SECONDS - started))
    else
        printf '    %s: FAILED after %d s (the whole log is %s)\n' "$title" $((SECONDS - started)) "$log"
        tail -n "${STEP_LINES_OF_FAILURE:-60}" "$log" | sed 's/^/    | /'
    fi
    return "$status"
}

# Compiles through ccache where it is installed: a second clone or build folder then takes a fraction of the time.
use_compiler_cache() {
    if command -v ccache >/dev/null; then
        export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
        export CCACHE_BASEDIR=$PWD CCACHE_SLOPPINESS=pch_defines,time_macros
    fi
}
