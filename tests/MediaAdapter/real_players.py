# SPDX-License-Identifier: MIT
"""What the helper for music says of players that people use, held against what playerctl says of them."""

from real import Audacious, Mpv, RealPlayer, SecondMpv
from real_scene import RealTestCase


class Scenarios(RealTestCase):
    """For each player the same."""

    player = RealPlayer

    def test_follows_what_the_user_does_with_it(self):
        player = self.start(self.player, "One", "Two")
        self.follows(lambda: player.does("pause"), status="Paused", title="One")
        self.agrees(player)
        self.follows_seek(player, 40)
        self.agrees(player)
        self.follows(lambda: player.does("play"), status="Playing", title="One", position=40)
        self.agrees(player)
        self.follows_seek(player, 70)
        self.agrees(player)
        self.follows(lambda: player.does("next"), status="Playing", title="Two", position=0)
        self.agrees(player)
        self.follows(lambda: player.does("previous"), status="Playing", title="One", position=0)
        self.agrees(player)
        self.follows(player.quit, status="", title="")
        self.assertIsNone(self.chosen())

    def test_follows_it_from_one_track_to_the_next(self):
        files = self.recording("Short", 2.5), self.recording("Long")
        self.follows(lambda: self.player(self, *files), status="Playing", title="Long", position=0)
        self.assertIsNotNone(self.said(0, {"status": "Playing", "title": "Short"}))

    def test_notices_that_it_was_killed_and_is_started_again(self):
        self.follows(self.start(self.player, "One").kill, status="", title="")
        self.start(self.player, "Two")

    def test_sends_it_what_the_user_presses(self):
        player = self.start(self.player, "One", "Two")
        self.follows(lambda: self.send("send", "2"), status="Paused", title="One")
        self.follows(lambda: self.send("send", "2"), status="Playing", title="One")
        self.follows(lambda: self.send("send", "4"), status="Playing", title="Two")
        self.follows(lambda: self.send("send", "5"), status="Playing", title="One")
        self.agrees(player)


class MpvTests(Scenarios):
    player = Mpv


class AudaciousTests(Scenarios):
    player = Audacious


# Not to be run as tests of no player.
del Scenarios


class TwoAtOnceTests(RealTestCase):
    def status_of(self, player):
        return self.runs("playerctl", "--player", player.instance, "metadata", "--format", "{{status}} {{title}}").stdout.strip()

    def test_commands_go_to_the_one_that_plays(self):
        first, second = self.start(Mpv, "One", "Two"), self.start(Audacious, "Three", "Four")
        self.follows(lambda: second.does("pause"), shown=("Playing", "One"), name=second.name, status="Paused")
        self.agrees(first)
        self.follows(lambda: self.send("send", "4"), status="Playing", title="Two")
        self.follows(lambda: self.send("send", "2"), status="Paused", title="Two")
        self.agrees(first)
        self.assertEqual(self.status_of(second), "Paused Three")
        self.follows(lambda: second.does("play"), status="Playing", title="Three")
        self.follows(lambda: self.send("send", "4"), status="Playing", title="Four")
        self.agrees(second)
        self.assertEqual(self.status_of(first), "Paused Two")

    def test_the_other_is_shown_once_one_has_gone(self):
        first, second = self.start(Mpv, "One"), self.start(SecondMpv, "Two")
        self.follows(lambda: second.does("pause"), shown=("Playing", "One"), name=second.name, status="Paused")
        self.agrees(first)
        self.follows(lambda: second.does("play"), status="Playing", title="Two")
        self.agrees(second)
        self.follows(second.kill, shown=("Playing", "One"), name=None)
        self.agrees(first)
        second = self.start(Audacious, "Three")
        self.follows(second.quit, shown=("Playing", "One"), name=None)
        self.agrees(first)
