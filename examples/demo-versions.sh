#!/bin/bash
# Renders the kick pattern dry, distorted, gated and delayed, by --set values alone.
# usage: examples/demo-versions.sh [FOLDER]
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
program=${THUDFORGE:-build/demo/host/thudforge}
folder=${1:-out/versions}
mkdir -p "$folder"

# version NAME SETTING...
version() {
    local name=$1 settings=()
    shift
    for setting in "$@"; do settings+=(--set "$setting"); done
    "$program" render examples/kick-pattern.mid -o "$folder/$name.wav" "${settings[@]}"
}

version dry "Output Dry/Wet Mix=0"
version distorted "Distortion Amount=0.9" "Distortion Type=0.5122" "Output Saturation=0.4"
version gated "Distortion Amount=0.6" "Distortion Type=0.4634" "Gate-Crack Level=0.75"
version delayed "Tempo Delay Amount=0.5" "Tempo Delay Feedback=0.5" "Tempo Delay Spread=0.7" "Tempo Delay Dump=0.6"
