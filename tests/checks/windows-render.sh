#!/bin/bash
# The demo rendered by the Windows program and module under Wine is the one that the Linux build renders.
# usage: tests/checks/windows-render.sh SOURCE-FOLDER LINUX-PROGRAM WINDOWS-PROGRAM WAVE-DIFFERENCE FOLDER
set -euo pipefail
source=$1 linux=$2 windows=$3 difference=$4 folder=$5
wine=$source/scripts/wine-run.sh
rm -rf "$folder"
mkdir -p "$folder"
if [ ! -x "$linux" ]; then
    echo "There is no Linux build to compare with: $linux (cmake --preset release && cmake --build --preset release)"
    exit 1
fi
# Where Wine has the root folder.
windows_path() { echo "Z:${1//\//\\}"; }
"$linux" render "$source/examples/kick-pattern.mid" -o "$folder/linux.wav" --bits 64f
"$wine" "$windows" render "$(windows_path "$source/examples/kick-pattern.mid")" \
    -o "$(windows_path "$folder/windows.wav")" --bits 64f
"$wine" "$difference" "$(windows_path "$folder/linux.wav")" "$(windows_path "$folder/windows.wav")" 1e-9
