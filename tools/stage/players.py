# SPDX-License-Identifier: MIT
"""Media players on the stage's bus, which do what they are told and play nothing that could be heard."""

import json
import os
import subprocess

from .stage import ROOT, end_process

_PLAYER = os.path.join(ROOT, "tests", "MediaAdapter", "player.py")


class Player:
    """One player, until the end of a `with`."""

    def __init__(self, stage, name, entry=""):
        self.process = stage.start("/usr/bin/python3", _PLAYER, f"org.mpris.MediaPlayer2.{name}", entry, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, text=True)
        assert self._answer() == "ready"

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        end_process(self.process)

    def _answer(self):
        return json.loads(self.process.stdout.readline())

    def tell(self, *words):
        self.process.stdin.write(json.dumps(words) + "\n")
        self.process.stdin.flush()
        return self._answer()

    def calls(self):
        """What it was told to do since the last time."""
        return self.tell("calls")

    def play(self, title, artist, times, cover=None, status="Playing"):
        """The times are the length and the position, in seconds; the cover is a file's path."""
        length, position = (int(seconds * 1e6) for seconds in times)
        metadata = {"mpris:trackid": ["o", "/track/" + "".join(filter(str.isalnum, title))], "xesam:title": ["s", title],
                    "xesam:artist": ["as", [artist]], "mpris:length": ["x", length]}
        if cover:
            metadata["mpris:artUrl"] = ["s", "file://" + cover]
        able = [word for name in ("CanGoNext", "CanGoPrevious", "CanPlay", "CanPause") for word in (name, "b", True)]
        self.tell("set", "Position", "x", position, "PlaybackStatus", "s", status, "Metadata", "a{sv}", metadata, *able)

    def pause(self):
        self.tell("set", "PlaybackStatus", "s", "Paused")
