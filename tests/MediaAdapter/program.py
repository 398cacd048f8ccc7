# SPDX-License-Identifier: MIT
"""The rest of the helper for music: artwork, its end, and commands."""

import base64
import fcntl
import itertools
import json
import os
import re
import signal
import subprocess
import sys
import termios
import time

from scene import ADAPTER, PATIENCE, PREFIX, MediaTestCase, Player, Stream, is_running, metadata, picture, wait_until


class ArtworkTests(MediaTestCase):
    def test_shows_a_file_as_artwork_after_the_title(self):
        path = os.path.join(self.folder, "a cover.png")
        with open(path, "wb") as file:
            file.write(picture(200, 400))
        player = Player(self, "mpv")
        stream = Stream(self)
        player.play("One", mpris__artUrl=["s", "file://" + path.replace(" ", "%20")])
        payload = stream.comes_to(lambda payload: "artworkData" in payload, "artwork")
        self.assertTrue(base64.b64decode(payload["artworkData"], validate=True).startswith((b"\x89PNG", b"\xff\xd8")))
        first = next(line for line in stream.lines if "title" in line["payload"])
        self.assertNotIn("artworkData", first["payload"])
        player.play("Two", 2)
        stream.comes_to(lambda payload: payload["title"] == "Two" and "artworkData" not in payload, "no artwork")

    def test_reads_a_file_again_that_is_written_for_each_track(self):
        path = os.path.join(self.folder, "cover.png")
        player = Player(self, "mpv")
        stream = Stream(self)
        seen = []
        for number, red in enumerate((10, 250)):
            with open(path, "wb") as file:
                file.write(picture(red))
            player.play(f"Title {number}", number, mpris__artUrl=["s", "file://" + path])
            seen.append(stream.comes_to(lambda payload: "artworkData" in payload and payload["artworkData"] not in seen,
                                        "another artwork")["artworkData"])
        self.assertEqual(stream.payload["title"], "Title 1")

    def test_refuses_links_pipes_and_what_is_elsewhere(self):
        target, link, pipe = (os.path.join(self.folder, name) for name in ("target.png", "link.png", "pipe.png"))
        with open(target, "wb") as file:
            file.write(picture(200))
        os.symlink(target, link)
        os.mkfifo(pipe)
        player = Player(self, "mpv")
        stream = Stream(self)
        for number, url in enumerate(("file://" + link, "file://" + pipe, "file:///dev/zero", "https://127.0.0.1:9/a.png"), 1):
            player.play(f"Title {number}", number, mpris__artUrl=["s", url])
            stream.logs("no artwork", number)
        for number, url in enumerate(("http://127.0.0.1:9/a.png", "x" * 100_000, "file://" + target), 5):
            player.play(f"Title {number}", number, mpris__artUrl=["s", url])
            stream.says(title=f"Title {number}")
        stream.comes_to(lambda payload: "artworkData" in payload, "the artwork that is a file")
        with_artwork = [line for line in stream.lines if line["payload"].get("artworkData")]
        self.assertEqual(len(with_artwork), 1)

    def test_a_picture_gets_little_time_and_no_file(self):
        program = self.starts([os.path.join(os.path.dirname(ADAPTER), "veslora-media-artwork")], stdin=subprocess.PIPE)

        def limits():
            with open(f"/proc/{program.pid}/limits", encoding="utf-8") as file:
                return {line[:26].strip(): line[26:].split()[:2] for line in file}
        wait_until(lambda: limits()["Max file size"] == ["0", "0"], "files are refused")
        self.assertEqual(limits()["Max cpu time"], ["5", "5"])
        self.assertEqual(limits()["Max core file size"], ["0", "0"])


class EndTests(MediaTestCase):
    def test_ends_with_its_parent(self):
        lines = os.path.join(self.folder, "lines")
        parent = self.starts([sys.executable, "-c", "import subprocess, sys, time\n"
                              "child = subprocess.Popen([sys.argv[1], 'stream'], stdout=open(sys.argv[2], 'w'))\n"
                              "print(child.pid, flush=True)\ntime.sleep(1000)", ADAPTER, lines], text=True)
        child = int(parent.stdout.readline())
        wait_until(lambda: os.path.exists(lines) and os.path.getsize(lines) > 0, "the child begins")
        parent.kill()
        parent.wait()
        wait_until(lambda: not is_running(child), "the child ends")

    def test_ends_when_nobody_reads(self):
        stream = Stream(self)
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        other = self.starts([ADAPTER, "stream"])
        self.assertIn(b"data", other.stdout.readline())
        other.stdout.close()
        self.assertEqual(other.wait(PATIENCE), 0, "although nothing is to be said")

    def stuck(self, player):
        """A stream whose reader does not read, with no room left in the pipe."""
        stream = self.starts([ADAPTER, "stream"], pipesize=4096)
        self.assertIn(b"data", stream.stdout.readline())

        numbers = itertools.count()

        def is_full():
            number = next(numbers)
            player.play(f"{number} " + "x" * 4000, number)
            waiting = fcntl.ioctl(stream.stdout, termios.FIONREAD, bytes(4))
            return int.from_bytes(waiting, sys.byteorder) == 4096
        wait_until(is_full, "the pipe is full")
        return stream

    def test_a_reader_that_does_not_read_gets_the_latest_later(self):
        player = Player(self, "mpv")
        stream = self.stuck(player)
        player.play("Last", 99)
        payload = {}
        while payload.get("title") != "Last":
            payload.update(json.loads(stream.stdout.readline())["payload"])
        stream.stdout.close()
        self.assertEqual(stream.wait(PATIENCE), 0)

    def test_a_reader_that_does_not_read_keeps_nobody_from_ending(self):
        stream = self.stuck(Player(self, "mpv"))
        self.bus.kill()
        self.assertEqual(stream.wait(PATIENCE), 1)

    def test_ends_with_an_error_when_the_bus_goes_or_was_never_there(self):
        stream = Stream(self)
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        self.bus.kill()
        self.assertEqual(stream.program.wait(PATIENCE), 1)
        self.assertEqual(self.send("stream").returncode, 1)
        del self.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.assertEqual(self.send("stream").returncode, 1)


class CommandTests(MediaTestCase):
    def test_sends_commands_to_the_player_that_is_reported(self):
        reported, other = Player(self, "reported"), Player(self, "other")
        reported.play("Reported")
        reported.status("Paused")
        stream = Stream(self)
        stream.says(title="Reported")
        wait_until(lambda: self.chosen() == reported.name, "the choice is stored")
        other.tell("keep", "PlaybackStatus", "s", "Playing")
        for word, call in (("2", "PlayPause"), ("4", "Next"), ("5", "Previous")):
            self.assertEqual(self.send("send", word).returncode, 0)
            self.assertEqual(reported.tell("calls"), [call])
        self.assertEqual(other.tell("calls"), [])

    def test_starts_a_player_that_is_stopped(self):
        player = Player(self, "mpv")
        player.tell("set", "PlaybackStatus", "s", "Stopped", *metadata("One"))
        self.assertEqual(self.send("send", "2").returncode, 0)
        self.assertEqual(player.tell("calls"), ["Play"])

    def test_without_a_stream_the_playing_one_is_told(self):
        players = {status: Player(self, status.lower()) for status in ("Playing", "Paused", "Stopped")}
        for status, player in players.items():
            player.status(status)
        players["Stopped"].signal(signal.SIGSTOP)
        self.assertEqual(self.send("send", "4").returncode, 0)
        self.assertEqual(players["Playing"].tell("calls"), ["Next"])
        self.assertEqual(players["Paused"].tell("calls"), [])

    def test_a_stored_player_that_has_gone_is_replaced(self):
        os.mkdir(os.path.join(self.runtime, "veslora"), 0o700)
        path = os.path.join(self.runtime, "veslora", "media-player")
        with open(path, "w", encoding="utf-8") as file:
            file.write(PREFIX + "gone")
        os.chmod(path, 0o600)
        player = Player(self, "there")
        player.play("One")
        self.assertEqual(self.send("send", "2").returncode, 0)
        self.assertEqual(player.tell("calls"), ["PlayPause"])

    def test_tells_when_a_command_came_to_nothing(self):
        self.assertEqual(self.send("send", "2").returncode, 1, "nobody plays")
        player = Player(self, "hung")
        player.play("One")
        Stream(self).says(title="One")
        wait_until(lambda: self.chosen() == player.name, "the choice is stored")
        player.signal(signal.SIGSTOP)
        began = time.monotonic()
        self.assertNotEqual(self.send("send", "4").returncode, 0)
        self.assertLess(time.monotonic() - began, 6)

    def test_refuses_other_words(self):
        for words in ((), ("send",), ("send", "3"), ("send", "02"), ("send", "2", "2"), ("stream", "x"), ("help",)):
            answer = self.send(*words)
            self.assertEqual(answer.returncode, 2, words)
            self.assertRegex(answer.stderr, re.compile(r"^usage: .*\n$"))
            self.assertEqual(answer.stdout, "")
