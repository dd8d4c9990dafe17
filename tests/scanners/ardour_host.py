"""Debian's Ardour with a home folder of its own, for tests that have it load the instrument."""

import os
import shutil
import signal
import subprocess
import time
from pathlib import Path


class HostUnusable(Exception):
    """Ardour does not work here, with or without the instrument."""


class Mismatch(Exception):
    """The instrument did not do or keep what it should."""


class Ardour:
    """Debian's Ardour with a home folder of its own."""

    def __init__(self, folder, time_limit):
        try:
            listed = subprocess.run(["dpkg", "-L", "ardour"], capture_output=True, text=True, check=True).stdout
        except (OSError, subprocess.CalledProcessError):
            raise HostUnusable("the package ardour is not installed") from None
        self.scanner = self.find(listed, lambda path: path.name == "ardour-vst-scanner")
        self.tool = self.find(listed, lambda path: path.parent.name == "bin" and path.name.endswith("-lua"))
        self.script = Path(__file__).resolve().with_name("ardour-session.lua")
        self.deadline = time.monotonic() + time_limit
        self.modules = folder / "modules"
        home = folder / "home"
        nothing = folder / "nothing"
        for path in (self.modules, home, nothing):
            path.mkdir(parents=True)
        home.chmod(0o700)
        self.environment = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"), "LC_ALL": "C.UTF-8", "HOME": str(home),
            "TMPDIR": str(home), "XDG_CONFIG_HOME": str(home / "config"), "XDG_CACHE_HOME": str(home / "cache"),
            "XDG_DATA_HOME": str(home / "data"), "XDG_RUNTIME_DIR": str(home),
            "LXVST_PATH": str(self.modules), "VST3_PATH": str(nothing), "LADSPA_PATH": str(nothing),
        }

    @staticmethod
    def find(listed, wanted):
        for path in map(Path, listed.splitlines()):
            if wanted(path) and os.access(path, os.X_OK):
                return path
        raise HostUnusable("the package ardour lacks its scanner or its session tool")

    def run(self, *command, **variables):
        """Runs a program of Ardour's and returns its exit status (None after the time limit) and its output."""
        process = subprocess.Popen(
            [str(part) for part in command], env=self.environment | variables, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True)
        try:
            said, _ = process.communicate(timeout=max(1.0, self.deadline - time.monotonic()))
            status = process.returncode
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            said, _ = process.communicate()
            status = None
        return status, said.decode(errors="replace")

    def install(self, module):
        """Puts a copy of the module where Ardour looks, and has its scanner put it into the cache of plug-ins."""
        copy = self.modules / module.name
        shutil.copy(module, copy)
        # Ardour takes no notice of a cache that is not at least a second younger than the module.
        os.utime(copy, (time.time() - 60.0,) * 2)
        self.scan(copy)

    def scan(self, module):
        status, said = self.run(self.scanner, "-f", "-v", module, LD_LIBRARY_PATH=str(self.scanner.parent))
        if status != 0 or 'is_instrument="1"' not in said:
            raise Mismatch(f"{said}\nArdour's scanner did not take the module (status {status})")

    def session(self, failure, action, *arguments):
        """Runs the script's action; raises `failure` unless it came through. Returns the lines that it said."""
        status, said = self.run(self.tool, self.script, action, *arguments)
        lines = said.splitlines()
        if status != 0 or "done" not in lines:
            how = "did not end in time" if status is None else f"ended with status {status}"
            raise failure(f"{said}\nArdour's session tool {how} in the run \"{action}\"")
        return lines
