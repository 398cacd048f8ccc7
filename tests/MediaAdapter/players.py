# SPDX-License-Identifier: MIT
"""What the helper for music says of players: which one, and what of it, however unruly they are."""

import datetime
import json
import signal
import time

from scene import PREFIX, MediaTestCase, Player, Stream, metadata, wait_until


class FollowingTests(MediaTestCase):
    def test_says_that_nothing_plays(self):
        stream = Stream(self)
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        self.assertEqual(stream.lines, [{"type": "data", "diff": False, "payload": {}}])

    def test_reports_a_player_that_was_there_in_one_whole_line(self):
        player = Player(self, "vlc", "org.videolan.VLC")
        player.play("Title")
        player.tell("keep", "Position", "x", 12_000_000, "CanGoNext", "b", True, "CanGoPrevious", "b", False, "CanPlay", "b",
                    True)
        before = time.time()
        stream = Stream(self)
        payload = stream.says(title="Title", artist="Artist", album="Album", duration=200, playing=True,
                              bundleIdentifier="org.videolan.VLC", contentItemIdentifier="/track/1", canGoNext=True,
                              canGoPrevious=False, canPlay=True)
        self.assertEqual(len(stream.lines), 1)
        self.assertFalse(stream.lines[0]["diff"])
        self.assertRegex(payload["timestamp"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$")
        stamp = datetime.datetime.fromisoformat(payload["timestamp"].replace("Z", "+00:00")).timestamp()
        began = stamp - payload["elapsedTime"] + 12
        self.assertTrue(before - 0.01 <= began <= time.time() + 0.01, "the position is true to the moment")

    def test_follows_a_player_from_its_start_to_its_end(self):
        stream = Stream(self)
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        player = Player(self, "mpv")
        player.play("One", 1)
        stream.says(title="One", playing=True, bundleIdentifier="mpv")
        self.assertEqual(self.chosen(), PREFIX + "mpv")
        player.tell("keep", "Position", "x", 7_500_000)
        player.status("Paused")
        stream.says(playing=False, elapsedTime=7.5)
        player.tell("set", "Position", "x", 0, *metadata("Two", 2))
        stream.says(title="Two", contentItemIdentifier="/track/2", elapsedTime=0)
        player.tell("seek", 90_000_000)
        stream.says(elapsedTime=90)
        player.quit()
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        wait_until(lambda: self.chosen() is None, "the player's name goes")

    def test_a_change_with_its_position_is_one_line(self):
        player = Player(self, "mpv")
        player.play("One", 1)
        stream = Stream(self)
        stream.says(title="One")
        # The player has a moment to tell its position, which a busy machine may take from it once and again.
        for attempt in range(1, 40):
            time.sleep(0.06)
            before = len(stream.lines)
            player.tell("keep", "Position", "x", attempt * 1_000_000)
            player.tell("set", "PlaybackStatus", "s", "Paused" if attempt % 2 else "Stopped", "CanGoNext", "b", bool(attempt % 2))
            stream.says(elapsedTime=attempt, canGoNext=bool(attempt % 2))
            if len(stream.lines) == before + 1:
                return
        self.fail("never one line")

    def test_a_player_that_tells_where_it_will_be_is_believed(self):
        player = Player(self, "mpv")
        player.tell("set", "PlaybackStatus", "s", "Paused", "Position", "x", 3_000_000, *metadata("One"))
        stream = Stream(self)
        stream.says(title="One", elapsedTime=3)
        player.tell("seeked", 90_000_000)
        stream.says(elapsedTime=90)

    def test_an_answer_from_before_a_seek_is_dropped(self):
        player = Player(self, "mpv")
        player.tell("set", "PlaybackStatus", "s", "Playing", "Position", "x", 3_000_000, *metadata("One"))
        stream = Stream(self)
        stream.says(title="One", playing=True)
        player.tell("seeked", 90_000_000, "PlaybackStatus", "s", "Paused")
        stream.says(elapsedTime=90, playing=False)
        # Another change, so that the answer has come by then.
        player.tell("set", "CanGoNext", "b", True)
        stream.says(elapsedTime=90, canGoNext=True)

    def test_notices_a_player_that_is_killed_and_comes_back(self):
        player = Player(self, "mpv")
        player.play("One")
        stream = Stream(self)
        stream.says(title="One")
        player.kill()
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        Player(self, "mpv").play("Again")
        stream.says(title="Again", playing=True)

    def test_says_nothing_of_a_stop_between_two_tracks(self):
        player = Player(self, "browser")
        player.play("Title 0")
        stream = Stream(self)
        stream.says(title="Title 0")
        # The next track has a moment to come, which a busy machine may take from it once and again.
        for attempt in range(1, 40):
            time.sleep(0.06)
            before = len(stream.lines)
            player.tell("set", "PlaybackStatus", "s", "Stopped", "Metadata", "a{sv}", {})
            time.sleep(0.03)
            player.play(f"Title {attempt}", attempt)
            stream.says(title=f"Title {attempt}", playing=True)
            if {} not in [line["payload"] for line in stream.lines[before:]]:
                return
        self.fail("never without an empty payload")

    def test_a_stop_between_two_tracks_keeps_no_other_player_waiting(self):
        first, second = Player(self, "first"), Player(self, "second")
        stream = Stream(self)
        for attempt in range(40):
            first.play(f"First {attempt}", attempt)
            second.status("Paused")
            stream.says(title=f"First {attempt}")
            time.sleep(0.06)
            began = time.monotonic()
            first.tell("set", "PlaybackStatus", "s", "Stopped", "Metadata", "a{sv}", {})
            second.play(f"Second {attempt}", attempt)
            stream.says(title=f"Second {attempt}", playing=True)
            if stream.times[-1] - began < 0.08:
                return
        self.fail("always as late as if the first might go on")

    def test_reads_again_what_is_only_said_to_have_changed(self):
        player = Player(self, "mpv")
        player.play("One")
        stream = Stream(self)
        stream.says(title="One")
        player.tell("keep", *metadata("Two", 2))
        player.tell("invalidate", "Metadata")
        stream.says(title="Two")


class ChoiceTests(MediaTestCase):
    def test_the_playing_one_comes_first_and_then_the_last_to_change(self):
        first, second = Player(self, "first"), Player(self, "second")
        first.play("First")
        second.play("Second")
        second.status("Paused")
        stream = Stream(self)
        stream.says(title="First")
        first.status("Paused")
        stream.says(title="First", playing=False)
        second.tell("set", *metadata("Changed"))
        second.tell("set", "CanGoNext", "b", True)
        second.tell("set", "PlaybackStatus", "s", "Paused")
        first.tell("set", "CanGoNext", "b", True)
        self.assertEqual(stream.says(canGoNext=True)["title"], "First", "only a change of the status counts")
        second.status("Playing")
        stream.says(title="Changed", playing=True)
        first.status("Playing")
        stream.says(title="First", playing=True)
        first.kill()
        stream.says(title="Changed", playing=True, bundleIdentifier="second")

    def test_ignores_the_repeater(self):
        Player(self, "playerctld").play("Repeated")
        stream = Stream(self)
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        Player(self, "mpv").play("Real")
        stream.says(title="Real")
        self.assertNotIn("Repeated", json.dumps(stream.lines))

    def test_a_player_with_two_names_is_one(self):
        player = Player(self, "vlc.instance77")
        player.play("One")
        stream = Stream(self)
        stream.says(title="One", bundleIdentifier="vlc")

    def test_spotify_has_one_identifier(self):
        Player(self, "spotify", "spotify_spotify").play("Song")
        Stream(self).says(bundleIdentifier="com.spotify.client")

    def test_follows_many_players(self):
        players = [Player(self, f"player{number}") for number in range(12)]
        stream = Stream(self)
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        for number, player in enumerate(players):
            player.play(f"Title {number}")
            stream.says(title=f"Title {number}", playing=True)
        for player in reversed(players[1:]):
            player.kill()
        stream.says(title="Title 0", playing=True)


class UnrulyPlayerTests(MediaTestCase):
    def test_a_player_that_is_stopped_in_mid_call_holds_nobody_up(self):
        hung, other = Player(self, "hung"), Player(self, "other")
        hung.play("Hung")
        stream = Stream(self)
        stream.says(title="Hung")
        hung.tell("set", *metadata("Before"))
        hung.signal(signal.SIGSTOP)
        began = time.monotonic()
        other.play("Other")
        stream.says(title="Other")
        self.assertLess(time.monotonic() - began, 1)
        hung.signal(signal.SIGCONT)
        hung.status("Paused")
        hung.status("Playing")
        stream.says(title="Before")

    def test_a_player_that_is_stopped_from_the_start_is_heard_of_later(self):
        hung, other = Player(self, "hung"), Player(self, "other")
        hung.play("Hung")
        other.play("Other")
        other.status("Paused")
        hung.signal(signal.SIGSTOP)
        began = time.monotonic()
        stream = Stream(self)
        stream.says(title="Other")
        self.assertLess(time.monotonic() - began, 1.5, "the first line does not wait for all")
        stream.logs("NoReply")
        hung.signal(signal.SIGCONT)
        stream.says(title="Hung", playing=True)

    def test_a_player_killed_while_it_is_asked_is_forgotten(self):
        hung = Player(self, "hung")
        hung.play("Hung")
        hung.signal(signal.SIGSTOP)
        stream = Stream(self)
        stream.comes_to(lambda payload: payload == {}, "an empty payload")
        hung.kill()
        Player(self, "other").play("Other")
        stream.says(title="Other")

    def test_broken_fields_are_left_out_and_the_rest_stays(self):
        player = Player(self, "broken")
        broken = {"xesam:title": ["s", "x" * 1_000_000], "xesam:artist": ["i", 3], "xesam:album": ["ay", [1, 2]],
                  "mpris:length": ["s", "long"], "mpris:trackid": ["d", 1.5], "mpris:artUrl": ["b", True]}
        player.tell("set", "PlaybackStatus", "s", "Playing", "Metadata", "a{sv}", broken, "Position", "s", "here",
                    "CanGoNext", "s", "yes", "CanPlay", "i", 1)
        stream = Stream(self)
        payload = stream.says(title="x" * 4096, playing=True)
        self.assertEqual(set(payload), {"title", "playing", "elapsedTime", "timestamp", "bundleIdentifier",
                                        "contentItemIdentifier"})
        player.tell("set", "Metadata", "s", "none at all", "PlaybackStatus", "i", 7)
        stream.comes_to(lambda payload: "title" not in payload, "no title")
        self.assertTrue(stream.payload["playing"])
        player.tell("set", *metadata("Whole"))
        stream.says(title="Whole", duration=200)

    def test_lengths_and_positions_that_can_not_be(self):
        player = Player(self, "broken")
        stream = Stream(self)
        for number, length in enumerate((0, -5, 2 ** 63 - 1)):
            player.tell("keep", "Position", "x", 1_000_000)
            player.tell("set", "PlaybackStatus", "s", "Paused", *metadata(f"{length}", number, mpris__length=["x", length]))
            self.assertNotIn("duration", stream.says(title=f"{length}", elapsedTime=1))
        player.tell("keep", "Position", "x", 1_000_000_000_000)
        player.tell("set", *metadata("Unit", 9))
        stream.says(title="Unit", duration=200, elapsedTime=0)

    def test_an_id_that_never_changes_is_made_distinct(self):
        player = Player(self, "broken")
        stream = Stream(self)
        seen = set()
        for title in ("One", "Two", "Three"):
            player.play(title, 0)
            seen.add(stream.says(title=title)["contentItemIdentifier"])
        self.assertEqual(len(seen), 3)

    def test_a_flood_of_signals_becomes_few_lines_and_the_last_counts(self):
        player = Player(self, "flood")
        player.play("Before")
        stream = Stream(self)
        stream.says(title="Before")
        began = time.monotonic()
        player.tell("flood", 3000)
        stream.says(title="Title 2999")
        allowed = (time.monotonic() - began) / 0.05 + 3
        self.assertLess(len(stream.lines), allowed)
        gaps = [later - earlier for earlier, later in zip(stream.times[1:], stream.times[2:])]
        self.assertTrue(all(gap > 0.02 for gap in gaps), gaps)
