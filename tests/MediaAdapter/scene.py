# SPDX-License-Identifier: MIT
"""What the tests of the helper for music are made with: a bus of their own, players that do what they are told, and a reader
of the helper's lines."""

import json
import os
import queue
import signal
import struct
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
PREFIX = "org.mpris.MediaPlayer2."
BUS = """<busconfig>
<type>session</type><listen>unix:tmpdir={folder}</listen>
<policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy>
</busconfig>
"""
# Costs time only where a test fails.
PATIENCE = 20
ADAPTER = os.path.abspath(sys.argv[1])


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError("not within time: " + what)
        time.sleep(0.005)


def metadata(title, number=1, **more):
    values = {"xesam:title": ["s", title], "mpris:trackid": ["o", f"/track/{number}"], "xesam:artist": ["as", ["Artist"]],
              "xesam:album": ["s", "Album"], "mpris:length": ["x", 200_000_000], **more}
    return ["Metadata", "a{sv}", {key.replace("__", ":"): value for key, value in values.items() if value}]


def picture(red, side=8):
    """A PNG of one colour."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    row = b"\0" + bytes((red, 0, 0)) * side
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(row * side)) + chunk(b"IEND", b""))


class Player:
    def __init__(self, test, name, entry=""):
        self.test, self.name = test, PREFIX + name
        self.program = test.starts([os.path.join(HERE, "player.py"), self.name, entry], stdin=subprocess.PIPE, text=True)
        assert json.loads(self.program.stdout.readline()) == "ready"

    def tell(self, *request):
        self.program.stdin.write(json.dumps(request) + "\n")
        self.program.stdin.flush()
        return json.loads(self.program.stdout.readline())

    def play(self, title, number=1, **more):
        """Plays a track in one go."""
        self.tell("set", "PlaybackStatus", "s", "Playing", "Position", "x", 0, *metadata(title, number, **more))

    def status(self, word):
        self.tell("set", "PlaybackStatus", "s", word)

    def signal(self, number):
        self.program.send_signal(number)
        if number == signal.SIGSTOP:
            wait_until(lambda: state_of(self.program.pid) == "T", "the player stops")

    def quit(self):
        self.program.stdin.close()
        self.program.wait(PATIENCE)

    def kill(self):
        self.program.kill()
        self.program.wait()


def state_of(process):
    try:
        with open(f"/proc/{process}/stat", encoding="utf-8") as file:
            return file.read().rpartition(")")[2].split()[0]
    except FileNotFoundError:
        return "gone"


def is_running(process):
    return state_of(process) not in ("Z", "gone")


class Stream:
    """The helper's lines, read as the program reads them."""

    def __init__(self, test):
        self.log = os.path.join(test.folder, "log")
        with open(self.log, "w", encoding="utf-8") as log:
            self.program = test.starts([ADAPTER, "stream"], stderr=log,
                                       env={**test.environment, "QT_LOGGING_RULES": "veslora.media=true"})
        self.lines, self.payload, self.times = [], None, []
        self.payloads = []
        self.coming = queue.Queue()
        self.reader = threading.Thread(target=self.read)
        self.reader.start()
        test.addCleanup(self.end)

    def read(self):
        for line in self.program.stdout:
            self.coming.put((time.monotonic(), json.loads(line)))

    def take_in(self):
        while not self.coming.empty():
            moment, line = self.coming.get()
            assert line["type"] == "data", line
            assert line["diff"] == bool(self.lines) or line["payload"] == {}, line
            if line["diff"]:
                changes = {key: value for key, value in line["payload"].items() if self.payload.get(key) != value}
                assert changes == line["payload"] != {}, f"said twice: {line}"
            self.payload = {key: value for key, value in {**(self.payload or {} if line["diff"] else {}),
                                                          **line["payload"]}.items() if value is not None}
            self.lines.append(line)
            self.payloads.append(self.payload)
            self.times.append(moment)

    def comes_to(self, condition, what):
        def holds():
            self.take_in()
            return self.payload is not None and condition(self.payload)
        try:
            wait_until(holds, what)
        except AssertionError as error:
            raise AssertionError(f"{error}; it is {str(self.payload)[:600]}") from None
        return self.payload

    def says(self, **values):
        return self.comes_to(lambda payload: values.items() <= payload.items(), f"the stream says {values}")

    def logs(self, text, times=1):
        def is_logged():
            with open(self.log, encoding="utf-8") as log:
                return log.read().count(text) >= times
        wait_until(is_logged, f"the log says {text}")

    def end(self):
        self.program.kill()
        self.program.wait()
        self.reader.join()


class MediaTestCase(unittest.TestCase):
    def setUp(self):
        self.folder = self.enterContext(tempfile.TemporaryDirectory())  # pylint: disable=consider-using-with
        self.runtime = os.path.join(self.folder, "runtime")
        os.mkdir(self.runtime, 0o700)
        self.environment = {"PATH": os.environ["PATH"], "XDG_RUNTIME_DIR": self.runtime}
        # No program of the machine's can be started by way of such a bus.
        configuration = os.path.join(self.folder, "bus.conf")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(BUS.format(folder=self.folder))
        self.bus = self.starts(["dbus-daemon", "--config-file=" + configuration, "--nofork", "--nopidfile", "--print-address"],
                               stderr=subprocess.DEVNULL, text=True)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.stdout.readline().strip()

    def starts(self, words, **more):
        """Starts a program that ends with the test."""
        more = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "env": self.environment, **more}
        program = self.enterContext(subprocess.Popen(words, **more))  # pylint: disable=consider-using-with
        self.addCleanup(program.kill)
        return program

    def chosen(self):
        try:
            with open(os.path.join(self.runtime, "veslora", "media-player"), encoding="utf-8") as file:
                return file.read()
        except FileNotFoundError:
            return None

    def send(self, *words):
        return subprocess.run([ADAPTER, *words], env=self.environment, capture_output=True, text=True, timeout=PATIENCE,
                              check=False)
