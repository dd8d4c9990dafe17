#!/bin/bash
# The program that compares sound files finds what it is there for.
# usage: tests/checks/wave-difference.sh WAVE-DIFFERENCE
set -euo pipefail
program=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
python3 - "$folder" <<'PYTHON'
import array, sys, wave

def write(name, samples, rate=44100):
    with wave.open(f"{sys.argv[1]}/{name}.wav", "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(array.array("h", samples).tobytes())

ramp = [k * 100 for k in range(300)]
write("ramp", ramp)
write("same", ramp)
write("one-off", ramp[:150] + [ramp[150] + 1] + ramp[151:])
write("short", ramp[:-1])
write("rate", ramp, 48000)
write("silent", [0] * 300)
PYTHON
failed=0
expect() {
    local wanted=$1 status=0
    shift
    "$program" "$@" || status=$?
    if [ "$status" -ne "$wanted" ]; then
        echo "$*: ended with $status instead of $wanted"
        failed=1
    fi
}
cd "$folder"
expect 0 ramp.wav same.wav 1e-9
expect 1 ramp.wav one-off.wav 1e-9
expect 0 ramp.wav one-off.wav 1e-4
expect 1 ramp.wav short.wav 1
expect 1 ramp.wav rate.wav 1
expect 1 silent.wav silent.wav 1e-9
expect 2 ramp.wav missing.wav 1e-9
exit "$failed"
