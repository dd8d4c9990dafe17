#!/usr/bin/env python3
"""Checks that the folders of the project include only what lies on the floors above them, and that no source file
grows too long.

usage: tools/check-floors.py [ROOT]

Prints one line per fault and ends with 1 when there is any.
"""

import pathlib
import re
import sys

MAX_LINES = 600
# Files that are mostly tables, each with the reason why it may be longer.
LONG_FILES = {}

# The instrument's own files in plugin/; the others there are the framework that knows hosts.
INSTRUMENT = ("ThudForge", "EntryPoint", "DrawnCurve", "ScopeRing")
# What the units of the chain share with the voices.
VOICE_FOR_EFFECTS = {
    "PolyBLEP", "WaveTableReader", "WaveTableSet", "Noise", "WaveGenerator", "GwFilterPaulKellett", "IGwFilter"}

ENGINE = ("core", "dsp", "voice", "effects", "patches")
# Floor: the floors that it may include from, besides itself.
FLOORS = {
    "core": (),
    "dsp": (),
    "voice": ("core",),
    "effects": ("core", "dsp", "voice for effects"),
    "patches": ("core", "effects", "voice"),
    "framework": ("core",),
    "editor": ("core", "framework", "resources"),
    "panels": ENGINE + ("framework", "editor", "instrument"),
    "instrument": ENGINE + ("framework", "editor", "panels"),
    "host": ("plugin/vst2.h",),
}
EVERYTHING = ("tests", "bench", "tools")
FOLDERS = tuple(dict.fromkeys(ENGINE + ("plugin", "editor", "host", "resources") + EVERYTHING))
SOURCES = (".h", ".hpp", ".cpp", ".c", ".S")
WINDOW_LAYERS = ("win", "x11")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def floor_of(path):
    """The floor that a file belongs to."""
    parts = pathlib.PurePosixPath(path).parts
    folder = parts[0]
    if folder == "plugin":
        return "instrument" if parts[-1].startswith(INSTRUMENT) else "framework"
    if folder == "editor" and len(parts) > 2 and parts[1] not in WINDOW_LAYERS:
        return "panels"
    return folder


def allowed(source, target):
    """Whether one file of the project may include another, both given as paths from its root."""
    here, there = floor_of(source), floor_of(target)
    if here in EVERYTHING or here == there:
        return True
    above = FLOORS.get(here, ())
    if there in above or target in above:
        return True
    stem = pathlib.PurePosixPath(target).stem
    return there == "voice" and "voice for effects" in above and stem in VOICE_FOR_EFFECTS


def faults_of(root, path):
    """Faults of one source file."""
    lines = (root / path).read_text(encoding="utf-8", errors="replace").splitlines()
    if len(lines) > LONG_FILES.get(path, MAX_LINES):
        yield f"{path}: {len(lines)} lines, at most {LONG_FILES.get(path, MAX_LINES)} are allowed"
    for number, line in enumerate(lines, 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        style, target = match.groups()
        known = (root / target).is_file() and pathlib.PurePosixPath(target).parts[0] in FOLDERS
        if known and style == "<":
            yield f"{path}:{number}: <{target}> is a file of the project and wants quotes"
        elif style == '"' and not known:
            yield f"{path}:{number}: \"{target}\" is no file of the project, named from its root"
        elif known and not allowed(path, target):
            yield f"{path}:{number}: the floor {floor_of(path)} may not include {target}"


def source_files(root):
    """All source files of the project as paths from its root."""
    for folder in FOLDERS:
        for file in sorted((root / folder).rglob("*")):
            if file.suffix in SOURCES and file.is_file():
                yield file.relative_to(root).as_posix()


def main():
    root = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent.parent
    files = list(source_files(root))
    faults = [fault for path in files for fault in faults_of(root, path)]
    for path in LONG_FILES:
        if path not in files:
            faults.append(f"{path}: is excused from the limit of {MAX_LINES} lines but does not exist")
    if not files:
        faults.append(f"{root}: there are no source files")
    print("\n".join(faults) if faults else f"{len(files)} source files in order")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
