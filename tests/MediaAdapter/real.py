# SPDX-License-Identifier: MIT
"""Real media players for the tests of the helper for music, without a sound and with recordings that the test makes. Their
home, their bus and their temporary files are the test's own."""

import glob
import os
import struct
import subprocess

from scene import PATIENCE, PREFIX


def chunk(kind, data):
    return kind + struct.pack("<I", len(data)) + data + b"\0" * (len(data) % 2)


def write_recording(path, title, artist, seconds):
    """A WAV of silence with tags, such as every player reads."""
    rate = 8000
    texts = {b"INAM": title, b"IART": artist, b"IPRD": "Album"}
    tags = b"".join(chunk(kind, text.encode() + b"\0") for kind, text in texts.items())
    shape = struct.pack("<HHIIHH", 1, 1, rate, rate, 1, 8)
    sound = b"\x80" * int(rate * seconds)
    with open(path, "wb") as file:
        file.write(chunk(b"RIFF", b"WAVE" + chunk(b"fmt ", shape) + chunk(b"LIST", b"INFO" + tags) + chunk(b"data", sound)))


class RealPlayer:
    """One that runs and is told what to do as a user tells it, by way of the bus."""

    identifier = ""

    def __init__(self, test, instance, words, **more):
        self.test, self.instance = test, instance
        self.program = test.starts(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **more)
        test.players.append(self.program)

    @property
    def name(self):
        return PREFIX + self.instance

    def does(self, *words):
        done = self.test.runs("playerctl", "--player", self.instance, *words)
        assert done.returncode == 0, done.stderr

    def quit(self):
        self.test.runs("dbus-send", "--session", "--type=method_call", "--dest=" + self.name, "/org/mpris/MediaPlayer2",
                       "org.mpris.MediaPlayer2.Quit")
        self.program.wait(PATIENCE)

    def kill(self):
        self.program.kill()
        self.program.wait()


class Mpv(RealPlayer):
    identifier = "mpv"

    def __init__(self, test, *files):
        super().__init__(test, "mpv", ["mpv", "--no-video", "--ao=null", "--no-terminal", *files])


class SecondMpv(Mpv):
    """One that finds the name taken."""

    def __init__(self, test, *files):
        super().__init__(test, *files)
        self.instance = f"mpv.instance{self.program.pid}"


class Audacious(RealPlayer):
    identifier = "audacious"

    def __init__(self, test, *files):
        # Of its outputs only this one can be silent and yet take its time.
        output = glob.glob("/usr/lib/*/audacious/Output/sdlout.so")[0]
        settings = os.path.join(test.home, ".config", "audacious")
        os.makedirs(settings, exist_ok=True)
        with open(os.path.join(settings, "plugin-registry"), "w", encoding="utf-8") as file:
            file.write(f"format 11\noutput {output}\nstamp 0\nversion 48\nflags 0\nname SDL Output\n"
                       "domain audacious-plugins\npriority 0\nabout 0\nconfig 0\nenabled 1\n")
        super().__init__(test, "audacious", ["audacious", "--headless", *files],
                         env={**test.environment, "SDL_AUDIODRIVER": "dummy"})
