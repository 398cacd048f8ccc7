# SPDX-License-Identifier: MIT
"""What the tests with real media players compare: the helper's lines with what the players say by signals, and with what
playerctl, a program that is none of ours, says when it is asked."""

import datetime
import json
import os
import subprocess
import threading
import time

from real import write_recording
from scene import HERE, PATIENCE, MediaTestCase, Stream, wait_until

# How long after a player the stream may tell of a change, in seconds. What a busy machine does not let run does not count.
LATEST = 0.2
# How far apart two positions may be and still be the same, in seconds.
NEAR = 0.5


def matches(seen, wanted):
    return all(name in seen and (abs(seen[name] - value) < NEAR if name == "position" else seen[name] == value)
               for name, value in wanted.items())


def status_of(payload):
    """What the player has said, of those that have a title."""
    return "Playing" if payload["playing"] else "Paused"


def position_of(payload, moment):
    """Where its reader sees the track at that moment, in seconds since 1970."""
    if not payload["playing"]:
        return payload["elapsedTime"]
    stamp = datetime.datetime.fromisoformat(payload["timestamp"].replace("Z", "+00:00")).timestamp()
    return payload["elapsedTime"] + moment - stamp


def waited(thread):
    """For how many seconds a thread could have run and did not."""
    try:
        with open(f"/proc/{thread}/schedstat", encoding="utf-8") as file:
            return int(file.read().split()[1]) / 1e9
    except FileNotFoundError:
        return 0


class Witness:
    """What all players have said by signals, with the moments."""

    def __init__(self, test):
        self.seen = []
        self.program = test.starts([os.path.join(HERE, "witness.py")], text=True)
        assert json.loads(self.program.stdout.readline()) == "ready"
        self.reader = threading.Thread(target=self.read)
        self.reader.start()
        test.addCleanup(self.end)

    def read(self):
        for line in self.program.stdout:
            self.seen.append(json.loads(line))

    def sees(self, wanted, since):
        """When a player first said so after so many signals."""
        def found():
            return next((moment for moment, seen in self.seen[since:] if matches(seen, wanted)), None)
        try:
            wait_until(found, f"a player says {wanted}")
        except AssertionError as error:
            raise AssertionError(f"{error}; they said {self.seen[since:]}") from None
        return found()

    def end(self):
        self.program.kill()
        self.program.wait()
        self.reader.join()


class RealTestCase(MediaTestCase):
    def setUp(self):
        super().setUp()
        self.players = []
        self.home = os.path.join(self.folder, "home")
        os.mkdir(self.home)
        self.environment |= {"HOME": self.home, "TMPDIR": self.folder, "LANG": "C.UTF-8",
                             "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=" + os.path.join(self.folder, "none")}
        self.stream, self.witness = Stream(self), Witness(self)
        self.stream.comes_to(lambda payload: payload == {}, "an empty payload")

    def recording(self, title, seconds=100):
        path = os.path.join(self.folder, title + ".wav")
        write_recording(path, title, "Künstler", seconds)
        return path

    def runs(self, *words):
        return subprocess.run(words, env=self.environment, capture_output=True, text=True, timeout=PATIENCE, check=False)

    def start(self, kind, *titles):
        """A player of that kind, of which the stream tells at once."""
        started = []
        self.follows(lambda: started.append(kind(self, *(self.recording(title) for title in titles))), status="Playing",
                     title=titles[0], artist="Künstler")
        self.agrees(started[0])
        return started[0]

    def said(self, since, wanted):
        """When the stream first said so after so many lines."""
        wall = time.time() - time.monotonic()
        for moment, payload in list(zip(self.stream.times, self.stream.payloads))[since:]:
            seen = {"title": "", "artist": "", "status": ""}
            if payload:
                seen = {"title": payload.get("title", ""), "artist": payload.get("artist", ""), "status": status_of(payload),
                        "position": position_of(payload, wall + moment)}
            if matches(seen, wanted):
                return moment
        return None

    def follows(self, action, shown=None, position=None, **seen):
        """That the stream tells of what comes of an action, and soon after a player has told of it. `shown` is the status and
        the title of the player that the stream then shows, where that is another; of the position the player need not tell."""
        begin = self.now()
        told = dict(zip(("status", "title"), shown or (seen["status"], seen["title"])))
        if position is not None:
            told["position"] = position
        action()
        self.is_told(begin, seen, told)

    def follows_seek(self, player, position):
        begin = self.now()
        player.does("position", str(position))
        self.is_told(begin, {"position": position}, {"position": position})

    def now(self):
        """How many signals and lines there were, and how long those had to wait through whose hands a line goes. A player
        is among them, which is asked for what it did not tell."""
        hands = [self.bus.pid, self.stream.program.pid, self.stream.reader.native_id, *(each.pid for each in self.players)]
        return len(self.witness.seen), len(self.stream.lines), {thread: waited(thread) for thread in hands}

    def is_told(self, begin, seen, told):
        signals, lines, before = begin
        moment = self.witness.sees(seen, signals)
        try:
            self.stream.comes_to(lambda _: self.said(lines, told), f"the stream says {told}")
        except AssertionError:
            raise AssertionError(f"the stream does not say {told}; it says {self.stream.lines[lines:]} where the players said "
                                 f"{self.witness.seen[signals:]}") from None
        delay = self.said(lines, told) - moment
        # Nothing is told of one that has ended.
        lost = sum(max(0, seconds - before.get(thread, 0)) for thread, seconds in self.now()[2].items())
        self.assertLess(delay - lost, LATEST, f"{told}, with {lost} s more that the machine took")

    def asked(self, player):
        """What playerctl says of a player, and where it is."""
        shape = "{{status}}\t{{title}}\t{{artist}}\t{{album}}\t{{mpris:length}}"
        text = self.runs("playerctl", "--player", player.instance, "metadata", "--format", shape).stdout.rstrip("\n")
        return text, float(self.runs("playerctl", "--player", player.instance, "position").stdout or "nan")

    def agrees(self, player):
        """That the stream and playerctl say the same of a player now, and that a command would go to it."""
        compared = []

        def is_same():
            before = time.time()
            text, position = self.asked(player)
            after = time.time()
            self.stream.take_in()
            payload = self.stream.payload
            told = "\t".join((status_of(payload), *(payload.get(key, "") for key in ("title", "artist", "album")),
                              str(round(payload.get("duration", 0) * 1e6)))) if payload else ""
            earliest, latest = (position_of(payload, moment) for moment in (before, after)) if payload else (0, 0)
            compared[:] = [text, position, told, earliest, latest, payload, self.chosen()]
            return (told == text and earliest - NEAR < position < latest + NEAR and
                    payload["bundleIdentifier"] == player.identifier and self.chosen() == player.name)
        try:
            wait_until(is_same, "both say the same")
        except AssertionError as error:
            raise AssertionError(f"{error}: {compared}") from None
