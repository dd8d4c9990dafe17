#!/bin/bash
# The pages of the editor look on Windows as they do on Linux, but for the edges of letters: the systems draw those each
# in its own way.
# usage: tests/checks/windows-editor.sh SOURCE-FOLDER LINUX-PROGRAM WINDOWS-PROGRAM PICTURE-DIFFERENCE FOLDER
set -euo pipefail
source=$1 linux=$2 windows=$3 difference=$4 folder=$5
rm -rf "$folder"
mkdir -p "$folder"
if [ ! -x "$linux" ]; then
    echo "There is no Linux build to compare with: $linux (cmake --preset release && cmake --build --preset release)"
    exit 1
fi
# Where Wine has the root folder.
windows_path() { echo "Z:${1//\//\\}"; }

Xvfb -displayfd 3 -screen 0 1400x1000x24 -nolisten tcp -noreset 3>"$folder/display" >"$folder/xvfb.log" 2>&1 &
server=$!
trap 'kill "$server" 2>/dev/null || true' EXIT
for _ in $(seq 100); do
    [ -s "$folder/display" ] && break
    sleep 0.1
done
DISPLAY=:$(tr -d '[:space:]' <"$folder/display")
export DISPLAY

status=0
for page in synth scope about; do
    options=(--page "$page" --no-audio)
    "$linux" edit "${options[@]}" --screenshot "$folder/linux-$page.png"
    "$source/scripts/wine-display.sh" "$windows" edit "${options[@]}" \
        --screenshot "$(windows_path "$folder/windows-$page.png")"
    echo "$page:"
    "$source/scripts/wine-run.sh" "$difference" "$(windows_path "$folder/linux-$page.png")" \
        "$(windows_path "$folder/windows-$page.png")" 3 || status=1
done
exit "$status"
