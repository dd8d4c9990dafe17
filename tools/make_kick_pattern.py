#!/usr/bin/env python3
"""Writes examples/kick-pattern.mid: eight bars of hard kicks at 170 BPM.

Bars 1 to 3 stamp quarters under a gallop that grows, bar 4 breaks; bars 5 to 7 come back with more drive, and bar 8
is a rising roll over which the tempo falls to 160. Run with a path to write elsewhere, or with --check PATH to
compare a file with what would be written (exit status 1 if they differ).
"""

import pathlib
import struct
import sys

TICKS = 480  # a quarter note
BAR = 4 * TICKS
SIXTEENTH = TICKS // 4
CHANNEL = 9
KICK = 24  # C2 in the instrument's naming

# One letter a sixteenth: X an accent, x a plain kick, o a soft one, . nothing; a bar is 16 letters.
BARS = [
    "X...x...x...x...",
    "X...x...x...x.o.",
    "X...x...x..ox...",
    "X..x..x.X.o.xoxo",
    "X...x...x...x...",
    "X...x..ox...x.o.",
    "X..ox...x..ox..o",
    "XxoxX.xoXxxxXXXX",
]
VELOCITY = {"X": 127, "x": 108, "o": 64}

# The roll climbs in the last bar, a step for every quarter.
LAST_BAR_PITCH = [0, 0, 3, 5]

TEMPOS = [(0, 170.0), (7 * BAR, 168.0), (7 * BAR + 2 * TICKS, 164.0), (7 * BAR + 3 * TICKS, 160.0)]


def variable(number):
    """A number in seven-bit groups, all but the last with the top bit set."""
    groups = [number & 0x7F]
    while number > 0x7F:
        number >>= 7
        groups.append(number & 0x7F | 0x80)
    return bytes(reversed(groups))


def meta(kind, content):
    return bytes([0xFF, kind]) + variable(len(content)) + content


def track(events, end):
    """A track chunk of (tick, order, bytes) events; a status that repeats is left out."""
    body = b""
    now = 0
    running = None
    for tick, _, data in sorted(events, key=lambda event: event[:2]):
        body += variable(tick - now)
        now = tick
        if data[0] >= 0xF0:
            running = None
            body += data
        elif data[0] == running:
            body += data[1:]
        else:
            running = data[0]
            body += data
    body += variable(end - now) + meta(0x2F, b"")
    return b"MTrk" + struct.pack(">I", len(body)) + body


def conductor(end):
    events = [(0, 0, meta(0x03, b"Kick pattern")), (0, 1, meta(0x58, bytes([4, 2, 24, 8])))]
    for tick, tempo in TEMPOS:
        microseconds = round(60e6 / tempo)
        events.append((tick, 2, meta(0x51, microseconds.to_bytes(3, "big"))))
    return track(events, end)


def kicks():
    """(tick, length, note, velocity) of every kick; each rings until just before the next one."""
    hits = []
    for bar, steps in enumerate(BARS):
        for step, letter in enumerate(steps):
            if letter == ".":
                continue
            note = KICK + (LAST_BAR_PITCH[step // 4] if bar == len(BARS) - 1 else 0)
            hits.append((bar * BAR + step * SIXTEENTH, note, VELOCITY[letter]))
    ends = [hit[0] for hit in hits[1:]] + [len(BARS) * BAR]
    return [(tick, min(end - tick, TICKS) * 7 // 8, note, velocity)
            for (tick, note, velocity), end in zip(hits, ends)]


def performance(end):
    events = [(0, 0, meta(0x03, b"Kick"))]
    for tick, length, note, velocity in kicks():
        events.append((tick, 2, bytes([0x90 | CHANNEL, note, velocity])))
        # A note on with velocity 0 keeps the running status going.
        events.append((tick + length, 1, bytes([0x90 | CHANNEL, note, 0])))
    return track(events, end)


def song():
    end = len(BARS) * BAR
    tracks = [conductor(end), performance(end)]
    return b"MThd" + struct.pack(">IHHH", 6, 1, len(tracks), TICKS) + b"".join(tracks)


def main():
    arguments = sys.argv[1:]
    if arguments[:1] == ["--check"]:
        sys.exit(0 if pathlib.Path(arguments[1]).read_bytes() == song() else 1)
    default = pathlib.Path(__file__).resolve().parent.parent / "examples" / "kick-pattern.mid"
    target = pathlib.Path(arguments[0]) if arguments else default
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_bytes(song())


if __name__ == "__main__":
    main()
