# SPDX-License-Identifier: MIT
"""A display of one's own with the pieces that belong on it: window manager, compositor, message bus.

Each piece is really there when the call that starts it returns, and all of them end with their starter. Tests
in C++ have it done by tools/display, which reads requests; see `serve`.
"""

import itertools
import os
import select
import signal
import sys
import time

from .x11 import Client

DEFAULT_SIZE = "1600x900"
# Generous, since it only costs time when something is broken.
PATIENCE = 20
_STEP = 0.002
# OPTIMIZATION: without GLX, which nothing here draws by, the server is there after 25 ms instead of 45, and gone after 2
# instead of 7.
_SERVER = ["Xvfb", "-noreset", "-nolisten", "tcp", "-extension", "GLX"]
_COMMANDS = {
    # Its own settings, whatever the machine's user has.
    "openbox": ["openbox", "--sm-disable", "--config-file", "/etc/xdg/openbox/rc.xml"],
    "i3": ["i3", "-c", os.path.join(os.path.dirname(os.path.abspath(__file__)), "i3.conf")],
    "compositor": ["picom", "--config", "/dev/null", "--backend", "xrender", "--no-fading-openclose"],
}


class DisplayError(Exception):
    """A piece did not start."""


def _private_folder():
    path = os.path.join(os.environ.get("TMPDIR", "/tmp"), f"veslora-stage-{os.getpid()}-{time.monotonic_ns()}")
    os.mkdir(path, 0o700)
    return path


def _remove(folder):
    """Takes away a folder with what is in it, as far as that can be done: a program that is just ending may write there."""
    for path, folders, files in os.walk(folder, topdown=False):
        for name in (*files, *folders):
            inner = os.path.join(path, name)
            try:
                (os.rmdir if os.path.isdir(inner) and not os.path.islink(inner) else os.unlink)(inner)
            except OSError:
                pass
    try:
        os.rmdir(folder)
    except OSError:
        pass


class Display:
    """`size` is width and height in pixels, such as "1600x900"; the one screen has no scale.

    `name` is what DISPLAY is set to, `folder` an empty one of its own, fit to be a home and a runtime folder.
    """

    def __init__(self, size=DEFAULT_SIZE):
        self.folder = _private_folder()
        self._pieces = {}
        # Nothing of the machine's own session reaches a piece.
        self._env = {"PATH": os.environ["PATH"], "LANG": "C.UTF-8", "HOME": self.folder, "XDG_RUNTIME_DIR": self.folder}
        try:
            self.name = ":" + self._start_reporting("display", *_SERVER, "-displayfd", "{}", "-screen", "0", f"{size}x24")
            self._env["DISPLAY"] = self.name
            self._client = Client(self.name)
        except BaseException:
            self.close()
            raise

    def start_window_manager(self, name="openbox"):
        """Starts one of those that are known; returns its process once it manages windows."""
        # While it starts it forgets windows that come, but not one that is there before: it lists that at the end of its
        # start, and takes it from the list only when it handles events.
        window = self._client.show_window()
        process = self._start("window-manager", *_COMMANDS[name])
        self._wait("window-manager", lambda: window in self._managed())
        self._client.destroy_window(window)
        self._wait("window-manager", lambda: window not in self._managed())
        return process

    def start_compositor(self):
        """Returns its process once it owns the screen."""
        process = self._start("compositor", *_COMMANDS["compositor"])
        self._wait("compositor", self._has_compositor)
        return process

    def start_bus(self):
        """Starts a message bus, of which there may be several; returns its address."""
        return self._start_reporting(f"bus {len(self._pieces)}", "dbus-daemon", "--session", "--nofork", "--nopidfile",
                                     "--print-address={}")

    def kill(self, piece):
        """Ends a piece without giving it the time to say goodbye, and waits until the display knows."""
        process = self._pieces.pop(piece)
        os.kill(process, signal.SIGKILL)
        os.waitpid(process, 0)
        if piece == "compositor":
            self._wait(None, lambda: not self._has_compositor())

    def close(self):
        """Ends everything; takes back the folder."""
        for process in self._pieces.values():
            os.kill(process, signal.SIGTERM)
        for process in self._pieces.values():
            self._end(process)
        self._pieces.clear()
        _remove(self.folder)

    def _has_compositor(self):
        return self._client.owner_of("_NET_WM_CM_S0") != 0

    def _managed(self):
        return self._client.root_values("_NET_CLIENT_LIST")

    def _start(self, piece, *command):
        """Starts a program that ends, at the latest, when this process does."""
        nothing = [(os.POSIX_SPAWN_OPEN, descriptor, "/dev/null", os.O_RDWR, 0) for descriptor in range(3)]
        process = os.posix_spawnp("setpriv", ["setpriv", "--pdeathsig", "KILL", *command], self._env, file_actions=nothing)
        self._pieces[piece] = process
        return process

    def _start_reporting(self, piece, *command):
        """Starts a program that writes a line to the descriptor whose number stands for {}; returns that line."""
        ours, theirs = os.pipe()
        os.set_inheritable(theirs, True)
        self._start(piece, *(word.replace("{}", str(theirs)) for word in command))
        os.close(theirs)
        end = time.monotonic() + PATIENCE
        line = b""
        while not line.endswith(b"\n"):
            ready, _, _ = select.select([ours], [], [], max(0, end - time.monotonic()))
            more = os.read(ours, 4096) if ready else b""
            if not more:
                os.close(ours)
                raise DisplayError(f"{command[0]} does not start")
            line += more
        os.close(ours)
        return line.decode().strip()

    def _wait(self, piece, condition):
        end = time.monotonic() + PATIENCE
        while not condition():
            if piece and os.waitpid(self._pieces[piece], os.WNOHANG)[0]:
                del self._pieces[piece]
                raise DisplayError(f"the {piece} has ended")
            if time.monotonic() > end:
                raise DisplayError(f"the {piece or 'display'} is not ready")
            time.sleep(_STEP)

    @staticmethod
    def _end(process):
        """Waits for the end of a process that was asked to end, and no longer than is decent."""
        watch = os.pidfd_open(process)
        if not select.select([watch], [], [], 2)[0]:
            os.kill(process, signal.SIGKILL)
        os.close(watch)
        os.waitpid(process, 0)


def _done(display, request):
    """Does what one line asks for; returns what there is to tell of it."""
    piece, _, name = request.partition(" ")
    if piece == "window-manager":
        return display.start_window_manager(*name.split())
    if request == "compositor":
        return display.start_compositor()
    if request == "bus":
        return display.start_bus()
    if piece == "kill":
        display.kill(name)
        return "done"
    raise DisplayError(f"nobody knows what “{request}” is")


def _end_input(*_):
    """Being asked to end is the same as the end of the requests, so that nothing is torn down halfway through a start."""
    nothing = os.open("/dev/null", os.O_RDONLY)
    os.dup2(nothing, sys.stdin.fileno())
    os.close(nothing)


def serve(arguments):
    """Raises a display of the size that the first argument names, and says so in a line, “display :5 /its/folder”. Then
    does what each further argument and each line of standard input asks for (“window-manager”, “window-manager i3”,
    “compositor”, “bus”, “kill compositor”) and repeats it once it is done, with the process or the address; or else says
    “error” and why.
    Takes everything down when standard input closes.
    """
    for number in (signal.SIGTERM, signal.SIGINT):
        signal.signal(number, _end_input)
    display = None
    try:
        display = Display(*arguments[:1])
        print("display", display.name, display.folder, flush=True)
        for line in itertools.chain(arguments[1:], iter(sys.stdin.readline, "")):
            request = line.strip()
            print(request, _done(display, request), flush=True)
    except (DisplayError, ConnectionError, OSError, KeyError) as error:
        print("error", error, flush=True)
        return 1
    finally:
        if display:
            display.close()
    return 0
