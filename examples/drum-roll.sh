#!/bin/bash
# Renders a roll of contrasting drums into a folder, each from the blank start program with --set values alone.
# usage: examples/drum-roll.sh [FOLDER]
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
program=${THUDFORGE:-build/demo/host/thudforge}
folder=${1:-out/drum-roll}
mkdir -p "$folder"

# One oscillator, no sweep, an end of its own: what all drums start from.
drum=(--set "Oscillator 2 On/Off=0" --set "Oscillator 3 On/Off=0" --set "Osc1 Volume=1"
    --set "Volume Envelope Attack=0" --set "Volume Envelope Sustain=0" --set "Volume Envelope Decay=0.6"
    --set "Pitch Amount=0")

# roll NAME SECONDS-A-HIT SETTING...: four hits in a row.
roll() {
    local name=$1 seconds=$2 settings=()
    shift 2
    for setting in "$@"; do settings+=(--set "$setting"); done
    "$program" note C3 C3 C3 C3 --seconds "$seconds" --velocity 115 -o "$folder/$name.wav" "${drum[@]}" "${settings[@]}"
}

roll 1-kick 0.35 "Note transpose mode=0.5556" "Pitch Amount=0.45" "Pitch Duration=0.12" "Pitch Power=0.6" \
    "Sub-Osc Amount=0.2" "Sub-Osc Click=0.33"
roll 2-distorted-kick 0.35 "Note transpose mode=0.5556" "Pitch Amount=0.5" "Pitch Duration=0.2" "Pitch Power=0.8" \
    "Distortion Amount=0.8" "Distortion Type=0.4878"
roll 3-tom 0.25 "Note transpose mode=0.1111" "Osc1 Waveform=0.125" "Pitch Amount=0.08" "Pitch Duration=0.2" \
    "Pitch Power=0.3"
roll 4-snare 0.15 "Osc1 Waveform=0.2" "Osc1 Filter Type Left=0.25" "Osc1 Filter Cutoff=0.5" "Sub-Osc Amount=0.2" \
    "Note transpose mode=0.1111" "Volume Envelope Decay=0.3"
roll 5-closed-hihat 0.1 "Osc1 Waveform=0.2" "Osc1 Filter Type Left=0.75" "Osc1 Filter Cutoff=0.9" \
    "Filter Envelope Sustain=1" "Volume Envelope Duration=0.03" "Volume Envelope Decay=1"
roll 6-zap 0.2 "Osc1 Waveform=0.025" "Note transpose mode=0" "Pitch Amount=0.9" "Pitch Duration=0.15" "Pitch Power=0.2"
roll 7-metal 0.3 "Note transpose mode=0" "FM 1.00 carrier amount=1" "Modulation Fx Unit On/Off=1" \
    "Ring Modulation Amount=1" "Ring Modulation Frequency=0.37"
