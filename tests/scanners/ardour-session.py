#!/usr/bin/env python3
"""Lets Debian's Ardour save the instrument in a session and open it again, and compares what came back.

usage: ardour-session.py MODULE FOLDER

MODULE is the built module, FOLDER a folder of this test alone: it is emptied, and holds all that Ardour writes,
home folder, plug-in cache and session. Ends with 0 if all of the instrument's state survived, 1 if something did
not, 2 if Ardour itself does not work here.
"""

import base64
import math
import shutil
import struct
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from ardour_host import Ardour, HostUnusable, Mismatch

TIME_LIMIT = 110.0  # seconds for all that Ardour does
PARAMETERS = 159
CURVE_POINTS = 512
PROGRAMS = 128
PROGRAM = 5
SUB_OSC_AMOUNT = 80
SUB_OSC_AMOUNT_MAX = 1.259
# What is set on top of the program: continuous values, the one whose range goes beyond 1, a switch, choices, the
# tempo switch that is the last live id, and the first and last of the reserved ones.
SETTINGS = {3: 0.3, 80: 0.9, 81: 1.0, 102: 17 / 41, 115: 0.25, 116: 0.625, 137: 0.4, 139: 1.0, 140: 0.125, 158: 0.75}
# Rates that the host's tempo sets while the switch or choice beside them is on.
RATE_SET_BY = {13: 15, 34: 36, 55: 57, 127: 139}


def parameters_in(lines, word="parameter"):
    """What the script said of the parameters: values from 0 to 1 by id."""
    words = [line.split() for line in lines if line.startswith(word + " ")]
    values = [as_float(float(value)) for _, _, value in words]
    if [int(number) for _, number, _ in words] != list(range(PARAMETERS)) or f"count {PARAMETERS}" not in lines:
        raise Mismatch(f"Ardour does not see {PARAMETERS} parameters")
    return values


class Saved:
    """What a session file holds of the instrument."""

    def __init__(self, path):
        self.path = path
        self.tree = ElementTree.parse(path)
        processors = [node for node in self.tree.iter("Processor") if node.get("type") == "lxvst"]
        if len(processors) != 1:
            raise Mismatch(f"{path} holds {len(processors)} instruments")
        self.node = processors[0].find("lxvst/chunk")
        if self.node is None or not self.node.text:
            raise Mismatch(f"{path} has no state of the instrument")
        self.program = int(self.node.get("program", "-1"))
        self.chunk = base64.b64decode(self.node.text)
        self.parse()

    def parse(self):
        """Takes the bank apart: `names` and `states` by program, each state 512 curve points and 159 values."""
        numbers = CURVE_POINTS + PARAMETERS
        self.names, self.states = [], []
        if struct.unpack_from("<4si", self.chunk) != (b"tffp", 0x10000):
            raise Mismatch("the state does not begin with its header")
        position = 8
        try:
            for _ in range(PROGRAMS):
                (length,) = struct.unpack_from("<i", self.chunk, position)
                self.names.append(self.chunk[position + 4:position + 4 + length])
                used, count = struct.unpack_from("<Bi", self.chunk, position + 4 + length)
                if used != 1 or count != numbers:
                    raise Mismatch(f"program {len(self.names)} of the state says {used}, {count}")
                position += 4 + length + 5
                self.states.append((position, struct.unpack_from(f"<{numbers}d", self.chunk, position)))
                position += numbers * 8
        except struct.error:
            raise Mismatch(f"the state ends within program {len(self.names)}") from None
        if position != len(self.chunk):
            raise Mismatch(f"the state has {len(self.chunk) - position} bytes too many")

    def curve(self, program):
        return self.states[program][1][:CURVE_POINTS]

    def values(self, program):
        return self.states[program][1][CURVE_POINTS:]

    def draw_curve(self, program, points):
        """Puts another curve into a program's state and writes the session file again."""
        position = self.states[program][0]
        size = CURVE_POINTS * 8
        self.chunk = self.chunk[:position] + struct.pack(f"<{CURVE_POINTS}d", *points) + self.chunk[position + size:]
        self.node.text = base64.b64encode(self.chunk).decode()
        self.tree.write(self.path, encoding="UTF-8", xml_declaration=True)
        self.parse()


def as_float(number):
    return struct.unpack("<f", struct.pack("<f", number))[0]


def expect_same(what, before, after):
    """Raises a Mismatch that names the first differences of two lists."""
    if len(before) != len(after):
        raise Mismatch(f"{what}: {len(before)} before, {len(after)} after")
    different = [f"{index}: {one!r} before, {other!r} after"
                 for index, (one, other) in enumerate(zip(before, after)) if one != other]
    if different:
        raise Mismatch(f"{what}: {len(different)} differ:\n    " + "\n    ".join(different[:20]))


def check_made(lines, saved):
    """The session as it was made: the program was chosen, the parameters set, and the state says what is heard."""
    fresh, chosen, live = (parameters_in(lines, word) for word in ("fresh", "chosen", "parameter"))
    name = saved.names[PROGRAM].decode(errors="replace")
    if fresh == chosen or f"program {name}" not in lines or saved.program != PROGRAM:
        raise Mismatch(f"program {PROGRAM}, \"{name}\", was not chosen")
    for number, value in SETTINGS.items():
        if chosen[number] == live[number] or live[number] != as_float(value):
            raise Mismatch(f"parameter {number}: {chosen[number]} in the program, set to {value}, is {live[number]}")
    values = list(saved.values(PROGRAM))
    values[SUB_OSC_AMOUNT] /= SUB_OSC_AMOUNT_MAX
    expect_same("parameters, live and in the state", live, [as_float(value) for value in values])
    return live


def check_bank(before, after):
    """The whole bank after one pass through the instrument: equal but for rates that follow the tempo."""
    expect_same("names of programs", before.names, after.names)
    for program in range(PROGRAMS):
        expect_same(f"curve of program {program}", before.curve(program), after.curve(program))
        values, came_back = list(before.values(program)), list(after.values(program))
        if program != PROGRAM:
            for rate, switch in RATE_SET_BY.items():
                if values[switch] > 0.0:
                    values[rate] = came_back[rate]
        expect_same(f"values of program {program}", values, came_back)


def check_reopened(live, lines, after):
    expect_same("parameters", live, parameters_in(lines))
    name = after.names[PROGRAM].decode(errors="replace")
    if after.program != PROGRAM or f"program {name}" not in lines:
        raise Mismatch(f"program {PROGRAM}, \"{name}\", is not the present one after opening")


def run_test(module, folder):
    shutil.rmtree(folder, ignore_errors=True)
    ardour = Ardour(folder, TIME_LIMIT)
    # Without the instrument first: what fails here is no fault of the instrument.
    ardour.session(HostUnusable, "probe", folder / "probe")

    ardour.install(module)
    session = folder / "session"
    file = session / "session.ardour"
    settings = [f"{number}={value!r}" for number, value in SETTINGS.items()]
    lines = ardour.session(Mismatch, "make", session, PROGRAM, *settings)
    made = Saved(file)
    live = check_made(lines, made)

    lines = ardour.session(Mismatch, "open", session)
    opened = Saved(file)
    check_reopened(live, lines, opened)
    check_bank(made, opened)

    # A curve as somebody draws it, unlike that of any type. From here on every byte stays.
    drawn = Saved(file)
    drawn.draw_curve(PROGRAM, [0.9 * math.sin(0.0371 * index) - 0.05 for index in range(CURVE_POINTS)])
    lines = ardour.session(Mismatch, "open", session)
    again = Saved(file)
    check_reopened(live, lines, again)
    expect_same("drawn curve", drawn.curve(PROGRAM), again.curve(PROGRAM))
    if drawn.chunk != again.chunk:
        check_bank(drawn, again)
        raise Mismatch("the state changes when the session is opened and saved once more")
    print(f"{PARAMETERS} parameters, {CURVE_POINTS} curve points and {PROGRAMS} programs came back, "
          f"{len(again.chunk)} bytes of state")


def main():
    if len(sys.argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    module, folder = (Path(name).resolve() for name in sys.argv[1:])
    try:
        run_test(module, folder)
    except HostUnusable as failure:
        print(f"{failure}\nArdour does not work here, which the test needs")
        return 2
    except Mismatch as failure:
        print(f"{failure}\nThe instrument or its state did not come through Ardour")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
