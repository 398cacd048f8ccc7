# SPDX-License-Identifier: MIT
"""A home, a display and buses of its own for a run of the whole program."""

import json
import os
import shutil
import signal
import subprocess

from .display import Display

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
# Points; the display has as many pixels as the scale makes of them.
SIZE = (1440, 900)


def end_process(process):
    """Asks a process to end, and makes it where asking does not help."""
    if process.poll() is None:
        process.send_signal(signal.SIGTERM)
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


class Stage:
    """A private home, display, window manager, compositor and buses. Used in a `with`, after which all of it, and
    whatever was started on it, has ended.

    `scale` is how many pixels the program takes for a point. `below_wayland` lets the island's window take the form that
    it has on a Wayland desktop. `compositor` is that process's number.
    """

    def __init__(self, scale=1, below_wayland=False):
        self.scale = scale
        self.size = tuple(self.pixels(length) for length in SIZE)
        self.display = Display("x".join(map(str, self.size)))
        self.folder = self.display.folder
        self.home = os.path.join(self.folder, "home")
        self._kept = os.path.join(self.folder, "kept")
        self._processes = []
        self._accessibility = None
        self.compositor = None
        self.env = {
            "HOME": self.home,
            "XDG_RUNTIME_DIR": os.path.join(self.folder, "run"),
            "PATH": os.environ["PATH"],
            "LANG": "C.UTF-8",
            "DISPLAY": self.display.name,
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_QPA_PLATFORM": "xcb",
            "NO_AT_BRIDGE": "0",
            "QT_SCALE_FACTOR": str(scale),
        }
        if below_wayland:
            self.env["XDG_SESSION_TYPE"] = "wayland"

    def __enter__(self):
        try:
            os.mkdir(self.env["XDG_RUNTIME_DIR"], 0o700)
            self.clear()
            # A system's bus of our own too: nothing here may reach the machine's login manager.
            for bus in ("SESSION", "SYSTEM"):
                self.env[f"DBUS_{bus}_BUS_ADDRESS"] = self.display.start_bus()
            self._accessibility = self._spawn("/usr/libexec/at-spi-bus-launcher", "--launch-immediately",
                                              stderr=subprocess.DEVNULL)
            self.display.start_window_manager()
            self.compositor = self.display.start_compositor()
            self.run("hsetroot", "-add", "#7f97ad", "-add", "#45566f", "-gradient", "0")
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self._end_programs()
        if self._accessibility:
            end_process(self._accessibility)
        self.display.close()

    @property
    def below_wayland(self):
        return self.env.get("XDG_SESSION_TYPE") == "wayland"

    def pixels(self, points):
        return round(points * self.scale)

    def start(self, *command, **options):
        """Starts a program that ends with the stage, or when it is cleared."""
        process = self._spawn(*command, **options)
        self._processes.append(process)
        return process

    def run(self, *command, check=False):
        done = subprocess.run(command, env=self.env, capture_output=True, text=True, timeout=60, check=check)
        return done.stdout

    def clear(self, kept=False):
        """Ends whatever was started, and makes the home that of a user who has just come, or the one that was kept."""
        self._end_programs()
        shutil.rmtree(self.home, ignore_errors=True)
        shutil.rmtree(os.path.join(self.env["XDG_RUNTIME_DIR"], "veslora"), ignore_errors=True)
        if kept:
            shutil.copytree(self._kept, self.home, symlinks=True)
            return
        # Settings of an earlier start: the first one without any would open a window of its own accord.
        os.mkdir(self.home)
        self.write_settings({})

    def keep(self):
        """Remembers the home as it is now."""
        shutil.copytree(self.home, self._kept, symlinks=True)

    @property
    def has_kept(self):
        return os.path.exists(self._kept)

    @property
    def _settings(self):
        return os.path.join(self.home, ".config", "Veslora", "settings.json")

    def read_settings(self):
        with open(self._settings, encoding="utf-8") as file:
            return json.load(file)

    def write_settings(self, settings):
        path = self._settings
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            json.dump(settings, file)

    def _spawn(self, *command, **options):
        return subprocess.Popen(command, env=self.env, **{"stdin": subprocess.DEVNULL, **options})

    def _end_programs(self):
        for process in reversed(self._processes):
            end_process(process)
        self._processes.clear()
