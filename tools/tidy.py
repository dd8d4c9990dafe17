#!/usr/bin/env python3
"""Runs clang-tidy over all files of a build, two or more at a time, and remembers which were clean.

usage: tools/tidy.py BUILD-FOLDER [CACHE-FOLDER]

A clean file is not looked at again until the file, something of the project that it includes, its compile command,
the settings or the tools change. Prints the findings and ends with 1 when there are any.

Nearly all of the time goes into the headers of the standard library and the test framework, which are the same in every
file. So files are looked at in groups, each joined into one. A group that is not clean is cut in halves until single
files are left: only what is found in a file alone counts.
"""

import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

import tidy_groups

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = re.compile(rb'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
# Packages whose headers or checks decide on the result.
PACKAGES = ("clang-tidy-14", "libstdc++-12-dev", "libgtest-dev", "libbenchmark-dev", "libsndfile1-dev", "libcli11-dev")


@functools.lru_cache(maxsize=None)
def digest_and_includes(path):
    """Digest of one file, and the files of the project that it names."""
    data = path.read_bytes()
    named = (ROOT / match.decode(errors="replace") for match in INCLUDE.findall(data))
    return hashlib.sha256(data).hexdigest(), tuple(file for file in named if file.is_file())


def all_includes(path):
    """The file and everything of the project that it includes."""
    found, waiting = set(), [path]
    while waiting:
        file = waiting.pop()
        if file not in found:
            found.add(file)
            waiting.extend(digest_and_includes(file)[1])
    return sorted(found)


@functools.lru_cache(maxsize=None)
def tools():
    """Everything outside the file and its command that the result depends on."""
    versions = subprocess.run(["dpkg-query", "-W", *PACKAGES], capture_output=True, text=True, check=False).stdout
    settings = sorted(ROOT.glob(".clang-tidy")) + sorted(ROOT.glob("*/.clang-tidy"))
    return "\n".join([versions] + [file.read_text(encoding="utf-8") for file in settings])


def key_of(path, command):
    """Name under which the result of one file is remembered, the same in every clone."""
    parts = [tools(), command.replace(str(ROOT), "")]
    parts += [f"{file.relative_to(ROOT)} {digest_and_includes(file)[0]}" for file in all_includes(path)]
    return hashlib.sha256("\n".join(parts).encode()).hexdigest()


def findings_of(file, *arguments):
    """Findings of clang-tidy in one file, empty when it is clean."""
    result = subprocess.run(["clang-tidy", "--quiet", str(file), *arguments], capture_output=True, text=True,
                            check=False)
    if result.returncode == 0:
        return ""
    # One that was stopped has said nothing, and is not clean for that.
    return result.stdout.strip() or result.stderr.strip() or f"clang-tidy ended with {result.returncode}"


def compiler_options(command):
    """What a compile command says but for the compiler and the names of the files."""
    words = iter(shlex.split(command)[1:])
    options = []
    for word in words:
        if word in ("-o", "-c", "-MF", "-MT"):
            next(words)
        elif word != "-MD":
            options.append(word)
    return tuple(options)


class Tidy:
    """Looks at groups of files."""

    def __init__(self, root, build, commands):
        self.build = build
        self.options = {path: compiler_options(command) for path, command in commands.items()}
        self.groups = tidy_groups.GroupFolder(root, build / "tidy-groups")

    def findings(self, group):
        """Pairs of a file and its findings, for every file of a group."""
        if len(group) == 1:
            return [(group[0], findings_of(group[0], "-p", str(self.build)))]
        with self.groups.joined(group) as file:
            if not findings_of(file, "--", *self.options[group[0]]):
                return [(path, "") for path in group]
        half = len(group) // 2
        return self.findings(group[:half]) + self.findings(group[half:])


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    cache = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else build / "tidy-cache"
    cache.mkdir(parents=True, exist_ok=True)
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    commands = {pathlib.Path(entry["file"]): entry["command"] for entry in entries}
    keys = {path: key_of(path, command) for path, command in sorted(commands.items())
            if path.suffix == ".cpp" and path.is_relative_to(ROOT)}
    if not keys:
        print("There is no file to look at")
        return 1
    waiting = [path for path, key in keys.items() if not (cache / key).exists()]
    print(f"{len(keys)} files, {len(waiting)} of them changed since they were clean", flush=True)
    tidy = Tidy(ROOT, build, commands)
    groups = tidy_groups.grouped(waiting, lambda path: tidy.options[path])
    faults = {}
    count = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for done in concurrent.futures.as_completed([pool.submit(tidy.findings, group) for group in groups]):
            for path, findings in done.result():
                count += 1
                verdict = ": findings, see below" if findings else ""
                print(f"[{count}/{len(waiting)}] {path.relative_to(ROOT)}{verdict}", flush=True)
                if findings:
                    faults[path] = findings
                else:
                    (cache / keys[path]).touch()
    # Last, where whoever looks at the end of a log sees them.
    for findings in faults.values():
        print(findings)
    print(f"{len(faults)} files with findings" if faults else "all clean")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
