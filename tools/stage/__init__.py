# SPDX-License-Identifier: MIT
"""A display, buses and a home of its own for whoever runs the whole program: the pointer, the controls by their
accessible names, pictures, and agents that file what real ones file."""

import contextlib
import html
import json
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time

from .display import Display

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
AGENTS = os.path.join(ROOT, "tests", "data", "agents")
DATA = os.path.join(AGENTS, "claude")
# Points; the display has as many pixels as the scale makes of them.
SIZE = (1440, 900)
# A row of pixels of the open island below its widgets.
RACK_FOOT = 167


def wait_for(what, condition, seconds=20):
    """Returns the first true value of `condition`; ends the tour when there is none in time."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeoutError(f"waited in vain for {what}")
        time.sleep(0.02)


class Stage:
    """A private home, display, window manager, compositor and buses. Ends whatever it started, by its id.

    `scale` is how many pixels the program takes for a point. `below_wayland` lets the island's window take the form that
    it has on a Wayland desktop.
    """

    def __init__(self, scale=1, below_wayland=False):
        self.scale = scale
        self.size = tuple(self.pixels(length) for length in SIZE)
        self.processes = []
        self.display = None
        self.compositor = None
        self.home = tempfile.mkdtemp(prefix="veslora-tour-")
        runtime = os.path.join(self.home, "run")
        os.mkdir(runtime, 0o700)
        # Settings of an earlier start: the first one without any would open a window of its own accord.
        os.makedirs(os.path.join(self.home, ".config", "Veslora"))
        with open(os.path.join(self.home, ".config", "Veslora", "settings.json"), "w", encoding="utf-8") as file:
            file.write("{}\n")
        self.env = {
            "HOME": self.home,
            "XDG_RUNTIME_DIR": runtime,
            "PATH": os.environ["PATH"],
            "LANG": "C.UTF-8",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_QPA_PLATFORM": "xcb",
            "NO_AT_BRIDGE": "0",
            "QT_SCALE_FACTOR": str(scale),
        }
        if below_wayland:
            self.env["XDG_SESSION_TYPE"] = "wayland"

    def pixels(self, points):
        return round(points * self.scale)

    def start(self, *command, **options):
        process = subprocess.Popen(command, env=self.env, stdin=subprocess.DEVNULL, **options)
        self.processes.append(process)
        return process

    def open(self):
        self.display = Display("x".join(map(str, self.size)))
        self.env["DISPLAY"] = self.display.name
        # A system's bus of our own too: nothing here may reach the machine's login manager.
        for bus in ("SESSION", "SYSTEM"):
            self.env[f"DBUS_{bus}_BUS_ADDRESS"] = self.display.start_bus()
        self.start("/usr/libexec/at-spi-bus-launcher", "--launch-immediately", stderr=subprocess.DEVNULL)
        self.display.start_window_manager()
        self.compositor = self.display.start_compositor()
        self.run("hsetroot", "-add", "#7f97ad", "-add", "#45566f", "-gradient", "0")

    def run(self, *command, check=False):
        done = subprocess.run(command, env=self.env, capture_output=True, text=True, timeout=60, check=check)
        return done.stdout

    def close(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.send_signal(signal.SIGTERM)
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        if self.display:
            self.display.close()
        shutil.rmtree(self.home, ignore_errors=True)


class Services:
    """What the desktop offers on the buses, and what it heard."""

    def __init__(self, stage):
        self.stage = stage
        self.record = os.path.join(stage.home, "heard")
        self.seen = 0

    @contextlib.contextmanager
    def playing(self, *names):
        process = self.stage.start(os.path.join(ROOT, "tools", "tour-services"), self.record, *names,
                                   stdout=subprocess.PIPE, text=True)
        assert process.stdout.readline(), "the services play"
        yield
        process.terminate()
        process.wait(5)

    def heard(self):
        if not os.path.exists(self.record):
            return []
        with open(self.record, encoding="utf-8") as file:
            return file.read().splitlines()

    def expect(self, *lines):
        """Waits until as many lines were heard as are given, since the last time, and sees that they are the same."""
        wait_for("the services to hear " + "; ".join(lines), lambda: len(self.heard()) >= self.seen + len(lines))
        new = self.heard()[self.seen:]
        assert new == list(lines), f"the services heard {new} and not {lines}"
        self.seen += len(new)


class Screen:
    """What is on screen: controls by their accessible names, the pointer, and pictures."""

    def __init__(self, stage, directory):
        self.stage = stage
        self.directory = directory
        self.pictures = []
        # The accessibility library reads the environment of this process.
        os.environ.update(stage.env)
        import gi  # pylint: disable=import-outside-toplevel

        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi  # pylint: disable=import-outside-toplevel

        self.atspi = Atspi
        Atspi.init()

    def _walk(self, node, depth=0):
        if node is None or depth > 25:
            return
        yield node
        with contextlib.suppress(Exception):
            for index in range(node.get_child_count()):
                yield from self._walk(node.get_child_at_index(index), depth + 1)

    def find(self, name, role=None):
        """The control of that name, or of one that a pattern describes, that can be seen, or nothing."""
        is_it = name.fullmatch if isinstance(name, re.Pattern) else name.__eq__
        self.atspi.get_desktop(0).clear_cache()
        for node in self._walk(self.atspi.get_desktop(0)):
            with contextlib.suppress(Exception):
                if not is_it(node.get_name()) or (role and node.get_role_name() != role):
                    continue
                states = node.get_state_set()
                if states.contains(self.atspi.StateType.SHOWING):
                    return node
        return None

    def is_enabled(self, name):
        node = self.find(name)
        return bool(node) and node.get_state_set().contains(self.atspi.StateType.ENABLED)

    def move_to(self, x, y):
        """Moves there in steps, as a hand does."""
        place = dict(line.split("=") for line in self.stage.run("xdotool", "getmouselocation", "--shell").split())
        dx, dy = x - int(place["X"]), y - int(place["Y"])
        for step in range(1, 9):
            self.stage.run("xdotool", "mousemove_relative", "--sync", "--",
                           str(dx * step // 8 - dx * (step - 1) // 8), str(dy * step // 8 - dy * (step - 1) // 8))

    def point_at(self, name):
        # Qt 6.4 tells them in points.
        frame = self.find(name).get_extents(self.atspi.CoordType.SCREEN)
        self.move_to(self.stage.pixels(frame.x + frame.width / 2), self.stage.pixels(frame.y + frame.height / 2))

    def press(self, name):
        """Presses the control of that name with the pointer, once it can be pressed."""
        wait_for(f"“{name}” to be enabled", lambda: self.is_enabled(name))
        self.point_at(name)
        self.stage.run("xdotool", "click", "1")

    def scroll_down(self, name, notches):
        self.point_at(name)
        self.stage.run("xdotool", "click", "--repeat", str(notches), "--delay", "40", "5")

    def open_island(self):
        """Opens the rack and waits until it stands: what it does not show yet can't be pressed."""
        width = self.stage.size[0]
        self.move_to(width // 2, self.stage.pixels(12))
        foot = []

        def stands():
            # A program that has only just started hears of the pointer when it moves again.
            self.stage.run("xdotool", "mousemove_relative", "--sync", "--", str(1 - len(foot) % 2 * 2), "0")
            row = self.pixels(f"{width}x1+0+{self.stage.pixels(RACK_FOOT)}")
            foot.append(row)
            return (0, 0, 0) == row[width // 2] and foot[-2:-1] == [row]

        wait_for("the rack to stand", stands)

    def rest(self):
        """Takes the pointer out of the way."""
        self.move_to(self.stage.size[0] // 2, self.stage.size[1] - self.stage.pixels(120))

    def picture(self, name, caption, is_right=None):
        """Takes a picture after half a second, in which what moves settles, and again until it is the right one."""
        path = os.path.join(self.directory, f"{len(self.pictures) + 1:02}-{name}.png")
        time.sleep(0.5)

        def taken():
            self.stage.run("import", "-window", "root", path)
            return not is_right or is_right(path)

        wait_for(f"the right moment for {name}", taken)
        self.pictures.append((os.path.basename(path), caption))
        print(f"  {os.path.basename(path)}: {caption}", flush=True)

    def pixels(self, area, path=None):
        """Red, green and blue of each pixel of an area, row by row, of a picture or else of what is on screen."""
        source = ["convert", path] if path else ["import", "-window", "root"]
        raw = subprocess.run([*source, "-crop", area, "-depth", "8", "rgb:-"], env=self.stage.env, check=True,
                             capture_output=True, timeout=20).stdout
        return [tuple(raw[at:at + 3]) for at in range(0, len(raw), 3)]

    def index(self, log, heard):
        rows = "\n".join(f'<figure><img src="{html.escape(file)}" width="720"><figcaption>{html.escape(caption)}'
                         "</figcaption></figure>" for file, caption in self.pictures)
        lines, held = (html.escape("\n".join(each)) for each in (log, heard))
        with open(os.path.join(self.directory, "index.html"), "w", encoding="utf-8") as page:
            page.write(f'<!doctype html><meta charset="utf-8"><title>Veslora, a tour</title><h1>Veslora, a tour</h1>'
                       f"{rows}<h2>What the scripts printed</h2><pre>{lines}</pre>"
                       f"<h2>What the services heard</h2><pre>{held}</pre>\n")


def start_terminal(stage, title, place, command):
    """Opens a terminal at a place and runs a command in it; gives the process that the command becomes."""
    identity = os.path.join(stage.home, f"{title}.pid")
    stage.start("xterm", "-geometry", place, "-title", title, "-e", "sh", "-c", f"echo $$ >{identity}; {command}",
                stderr=subprocess.DEVNULL)
    return int(wait_for(f"the process of {title}", lambda: os.path.exists(identity) and
                        open(identity, encoding="utf-8").read().strip()))


def run_hook(stage, configuration, event, payload, shell):
    """Runs the first hook that a configuration names for an event, as the agent does: through a shell."""
    with open(os.path.join(stage.home, configuration), encoding="utf-8") as file:
        command = json.load(file)["hooks"][event][0]["hooks"][0]["command"]
    process = subprocess.Popen([*shell, command], env=stage.env, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    stage.processes.append(process)
    process.stdin.write(json.dumps(payload))
    process.stdin.close()
    return process


class Agent:
    """Plays Claude Code: a session's file beside a real process, and the hooks that its settings name."""

    def __init__(self, stage, name="w-allow", pid=None):
        self.stage = stage
        self.sessions = os.path.join(stage.home, ".claude", "sessions")
        os.makedirs(self.sessions, exist_ok=True)
        with open(os.path.join(DATA, "hooks", "PermissionRequest.Bash.json"), encoding="utf-8") as file:
            self.payload = json.load(file)
        self.name = name
        self.pid = pid or start_terminal(stage, name, "100x24+170+330", "echo 'The agent runs here.'; exec sleep 600")

    def session(self, status, **more):
        with open(os.path.join(DATA, "sessions", "busy.json"), encoding="utf-8") as file:
            record = json.load(file)
        record.pop("tmux", None)
        record.update(pid=self.pid, status=status, name=self.name, sessionId=self.payload["session_id"],
                      statusUpdatedAt=int(time.time() * 1000), **more)
        with open(os.path.join(self.sessions, f"{self.pid}.json"), "w", encoding="utf-8") as file:
            json.dump(record, file)

    def hook(self, event, payload):
        return run_hook(self.stage, ".claude/settings.json", event, payload, ["/bin/sh", "-c"])

    def ask(self, command=None, session=None):
        payload = json.loads(json.dumps(self.payload))
        if command:
            payload["tool_input"] = {"command": command}
        if session:
            payload["session_id"] = session
        return self.hook("PermissionRequest", payload)


class Codex:
    """Plays Codex: a terminal with a program of that name, and hooks that run below a server which all terminals share."""

    def __init__(self, stage, name="codex-work"):
        self.stage = stage
        self.name = name
        self.folder = os.path.join(stage.home, name)
        terminal = os.path.join(stage.home, "bin", "codex")
        server = os.path.join(stage.home, ".codex", "app-server-daemon", "bin", "codex")
        for program, path in (("sleep", terminal), ("sh", server)):
            os.makedirs(os.path.dirname(path), exist_ok=True)
            shutil.copy(os.path.realpath(shutil.which(program)), path)
        os.mkdir(self.folder)
        # The server itself is the hooks' parent.
        self.shell = [server, "-c", 'eval "$1"; exit 0', "app-server"]
        self.pid = start_terminal(stage, name, "100x24+170+330",
                                  f"echo 'Codex runs here.'; cd {self.folder}; exec {terminal} 600")

    def hook(self, event, **more):
        """Runs the hook of an event with what Codex was seen to send, but for the folder."""
        name = event if event == "UserPromptSubmit" else f"{event}.Bash"
        with open(os.path.join(AGENTS, "codex", "hooks", f"{name}.json"), encoding="utf-8") as file:
            payload = json.load(file)
        payload.update(cwd=self.folder, **more)
        return run_hook(self.stage, ".codex/hooks.json", event, payload, self.shell)


def active_window(stage):
    return stage.run("xdotool", "getactivewindow", "getwindowname").strip()


def start_program(stage, program):
    """Starts it and waits until scripts find its signs of life, and not those of one before it that was killed."""
    veslora = stage.start(program)
    support = os.path.join(stage.home, ".local", "share", "Veslora")

    def shows_itself():
        with contextlib.suppress(FileNotFoundError), open(os.path.join(support, "pid"), encoding="utf-8") as file:
            return file.readline().strip() == str(veslora.pid) and os.path.exists(os.path.join(support, "heartbeat"))
        return False

    wait_for("its signs of life", shows_itself)
    return veslora


def end(veslora, heartbeat):
    """Ends the program as the system does, and looks whether it did all that it has to."""
    veslora.send_signal(signal.SIGTERM)
    assert veslora.wait(10) == 0, "SIGTERM ends the program well"
    assert not os.path.exists(heartbeat), "no script waits for a program that is gone"
