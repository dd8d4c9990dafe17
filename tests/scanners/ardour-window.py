#!/usr/bin/env python3
"""Lets Debian's Ardour open the instrument's editor in a window, and compares it with what the command line host shows.

usage: ardour-window.py MODULE PROGRAM FOLDER

MODULE is the built module, PROGRAM the command line host, FOLDER a folder of this test alone: it is emptied, and holds
all that Ardour writes, and pictures: editor-PAGE.png, the editor as Ardour shows it, and screen-PAGE.png, the screen.
Ends with 0 if the editor is shown and can be used, 1 if not, 2 if Ardour itself does not work here.
"""

import os
import re
import shutil
import signal
import struct
import subprocess
import sys
import time
import zlib
from pathlib import Path

from ardour_host import Ardour, HostUnusable, Mismatch

TIME_LIMIT = 90.0  # seconds for all
WIDTH, HEIGHT = 1220, 835
SCREEN = (1700, 1100)
PLACE = (20, 30)  # of the host's window for the plug-in
PROGRAM_NUMBER = 5
RATE, BLOCK = 48000, 1024
# Where the pages are clicked on.
TABS = {"synth": (938, 27), "scope": (1024, 27)}
# How many of the pixels are the same in both hosts; between two programs it is 0.98. The level that was heard differs.
ALIKE = 0.99

# Ardour's own file of settings: a sound system without a device, started without questions.
CONFIG = f"""<?xml version="1.0" encoding="UTF-8"?>
<Ardour><Config>
<Option name="hide-dummy-backend" value="0"/>
<Option name="try-autostart-engine" value="1"/>
</Config>
<Extra><AudioMIDISetup><EngineStates>
<State backend="None (Dummy)" driver="" device="" input-device="Silence" output-device="Silence" sample-rate="{RATE}"
 buffer-size="{BLOCK}" n-periods="0" input-latency="0" output-latency="0" input-channels="0" output-channels="0"
 active="1" use-buffered-io="0" midi-option="No MIDI I/O" lru="1"/>
</EngineStates></AudioMIDISetup></Extra>
</Ardour>
"""


class Picture:
    """Rows of pixels, three bytes each."""

    def __init__(self, rows):
        self.rows = rows

    def part(self, left, top, width, height):
        return Picture([row[left * 3:(left + width) * 3] for row in self.rows[top:top + height]])

    def likeness(self, other):
        """How many of the pixels are the same, 0 to 1."""
        if len(self.rows) != len(other.rows) or len(self.rows[0]) != len(other.rows[0]):
            return 0.0
        width = len(self.rows[0])
        same = sum(width // 3 if row == twin else sum(row[i:i + 3] == twin[i:i + 3] for i in range(0, width, 3))
                   for row, twin in zip(self.rows, other.rows))
        return same * 3 / (len(self.rows) * width)

    def save(self, path):
        def piece(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
        header = struct.pack(">IIBBBBB", len(self.rows[0]) // 3, len(self.rows), 8, 2, 0, 0, 0)
        data = zlib.compress(b"".join(b"\0" + row for row in self.rows), 9)
        path.write_bytes(b"\x89PNG\r\n\x1a\n" + piece(b"IHDR", header) + piece(b"IDAT", data) + piece(b"IEND", b""))


class Display:
    """A display server without a screen, whose picture lies in a file."""

    def __init__(self, folder):
        folder.mkdir()
        self.file = folder / "Xvfb_screen0"
        reader, writer = os.pipe()
        command = ["Xvfb", "-displayfd", str(writer), "-screen", "0", "{}x{}x24".format(*SCREEN),
                   "-fbdir", str(folder), "-nolisten", "tcp"]
        self.process = subprocess.Popen(command, pass_fds=(writer,), stderr=subprocess.DEVNULL)
        os.close(writer)
        with open(reader, encoding="ascii") as answer:
            self.name = ":" + answer.readline().strip()

    def stop(self):
        self.process.kill()
        self.process.wait()

    def run(self, *command):
        return subprocess.run(command, env=os.environ | {"DISPLAY": self.name}, capture_output=True, text=True,
                              check=False, timeout=30).stdout

    def picture(self):
        data = self.file.read_bytes()
        header = struct.unpack(">25I", data[:100])
        start, row_bytes = header[0] + header[19] * 12, header[12]
        rows = []
        for row in range(header[5]):
            pixels = data[start + row * row_bytes:start + row * row_bytes + header[4] * 4]
            colours = bytearray(header[4] * 3)
            # Bytes of a pixel, lowest or highest first.
            places = (2, 1, 0) if header[7] == 0 else (1, 2, 3)
            for colour, place in enumerate(places):
                colours[colour::3] = pixels[place::4]
            rows.append(bytes(colours))
        return Picture(rows)

    def editor_place(self):
        """Left and top of the window with the editor's size that lies in the host's window for the plug-in."""
        tree = self.run("xwininfo", "-root", "-tree")
        host = tree.find("ThudForge 1.8.3 FREE")
        found = re.search(rf"\b{WIDTH}x{HEIGHT}\+\d+\+\d+ +\+(\d+)\+(\d+)", tree[host:]) if host >= 0 else None
        return (int(found[1]), int(found[2])) if found else None


def open_window_with_session(file):
    """Has the session open the plug-in's window, as one does that was saved with it."""
    text = file.read_text(encoding="utf-8")
    route = re.search(r'<Route [^>]*id="(\d+)" name="Kick"', text)[1]
    processor = re.search(r'<Processor [^>]*id="(\d+)"[^>]*type="lxvst"', text)[1]
    window = (f'<Extra><UI><Window name="P-{route}-{processor}" visible="1" x-off="{PLACE[0]}" y-off="{PLACE[1]}" '
              f'x-size="{WIDTH}" y-size="{HEIGHT + 40}"/></UI></Extra>')
    # What Ardour remembers of the sound system would have it ask about the one of today.
    text = re.sub(r"<EngineHints[^>]*/>", "", text)
    file.write_text(re.sub(r"(<Session [^>]*>)", rf"\1{window}", text, count=1), encoding="utf-8")


class Window:
    """Ardour with its windows, on a display."""

    def __init__(self, ardour, display, session, log):
        home = Path(ardour.environment["XDG_CONFIG_HOME"]) / "ardour7"
        home.mkdir(parents=True, exist_ok=True)
        (home / ".a7").touch()  # not the first start, so nobody is welcomed
        (home / "config").write_text(CONFIG, encoding="utf-8")
        libraries = ardour.scanner.parent
        program = next(libraries.glob("ardour-7*"), None)
        if program is None:
            raise HostUnusable("the package ardour lacks its program")
        environment = ardour.environment | {
            "DISPLAY": display.name, "LD_LIBRARY_PATH": str(libraries), "ARDOUR_DLL_PATH": str(libraries),
            "ARDOUR_DATA_PATH": "/usr/share/ardour7", "ARDOUR_CONFIG_PATH": "/etc/ardour7",
            "GTK_PATH": f"/etc/ardour7:{libraries}"}
        self.log = open(log, "wb")
        self.process = subprocess.Popen(
            [str(program), "--no-announcements", "--no-splash", str(session)], env=environment,
            stdin=subprocess.DEVNULL, stdout=self.log, stderr=subprocess.STDOUT, start_new_session=True)

    def lives(self):
        return self.process.poll() is None

    def stop(self):
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()
        self.log.close()


def wait_for(ardour, window, wanted):
    """What `wanted` gives once it gives anything; None if Ardour ends or the time is over before."""
    while window.lives() and time.monotonic() < ardour.deadline:
        found = wanted()
        if found:
            return found
        time.sleep(0.3)
    return None


def expected(program, module, display, folder, page):
    """The editor as the command line host shows it."""
    file = folder / f"expected-{page}.png"
    display.run(str(program), "edit", "--module", str(module), "--program", str(PROGRAM_NUMBER + 1), "--page", page,
                "--rate", str(RATE), "--block", str(BLOCK), "--screenshot", str(file))
    if not file.exists():
        raise Mismatch("the command line host shows no editor")
    return read_png(file)


def read_png(path):
    """A picture of three bytes a pixel without interlace, as the command line host writes it."""
    data = path.read_bytes()
    position, compressed = 8, b""
    while position < len(data):
        (length,) = struct.unpack_from(">I", data, position)
        kind = data[position + 4:position + 8]
        if kind == b"IHDR":
            width, height = struct.unpack_from(">II", data, position + 8)
        elif kind == b"IDAT":
            compressed += data[position + 8:position + 8 + length]
        position += length + 12
    raw, stride = zlib.decompress(compressed), width * 3
    rows, above = [], bytearray(stride)
    for number in range(height):
        start = number * (stride + 1)
        row = unfiltered(raw[start], bytearray(raw[start + 1:start + 1 + stride]), above)
        rows.append(bytes(row))
        above = row
    return Picture(rows)


def unfiltered(kind, row, above):
    for i, byte in enumerate(row):
        left = row[i - 3] if i >= 3 else 0
        up, corner = above[i], above[i - 3] if i >= 3 else 0
        estimate = left + up - corner
        distances = (abs(estimate - left), abs(estimate - up), abs(estimate - corner))
        nearest = (left, up, corner)[distances.index(min(distances))]
        row[i] = (byte + (0, left, up, (left + up) // 2, nearest)[kind]) & 255
    return row


def check_pages(ardour, window, display, wanted, folder):
    """Compares the pages of the editor, and goes from one to the other with the mouse."""
    place = wait_for(ardour, window, display.editor_place)
    if place is None:
        raise Mismatch("Ardour opens no window with the editor")
    corner = ["mousemove", str(SCREEN[0] - 1), str(SCREEN[1] - 1)]
    for page, picture in wanted.items():
        to_tab = ["mousemove", str(place[0] + TABS[page][0]), str(place[1] + TABS[page][1])]
        display.run("xdotool", *to_tab, "click", "1", *corner)

        def likeness():
            return display.picture().part(*place, WIDTH, HEIGHT).likeness(picture)

        shown = wait_for(ardour, window, lambda: likeness() >= ALIKE)
        screen = display.picture()
        screen.save(folder / f"screen-{page}.png")
        screen.part(*place, WIDTH, HEIGHT).save(folder / f"editor-{page}.png")
        if not shown:
            raise Mismatch(f"page {page}: {likeness():.1%} of the pixels are those of the command line host")
    if not window.lives():
        raise Mismatch("Ardour ended with the editor open")


def run_test(module, program, folder):
    shutil.rmtree(folder, ignore_errors=True)
    ardour = Ardour(folder, TIME_LIMIT)
    ardour.session(HostUnusable, "probe", folder / "probe")
    ardour.install(module)
    session = folder / "session"
    ardour.session(Mismatch, "make", session, PROGRAM_NUMBER)
    open_window_with_session(session / "session.ardour")
    display = Display(folder / "screen")
    try:
        wanted = {page: expected(program, module, display, folder, page) for page in TABS}
        window = Window(ardour, display, session / "session.ardour", folder / "ardour.log")
        try:
            check_pages(ardour, window, display, wanted, folder)
        finally:
            window.stop()
    finally:
        display.stop()
    print(f"Ardour shows the editor; the pictures are in {folder}")


def main():
    if len(sys.argv) != 4:
        print(__doc__, file=sys.stderr)
        return 2
    try:
        run_test(*(Path(name).resolve() for name in sys.argv[1:]))
    except HostUnusable as failure:
        print(f"{failure}\nArdour does not work here, which the test needs")
        return 2
    except Mismatch as failure:
        print(f"{failure}\nThe editor did not come up in Ardour")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
