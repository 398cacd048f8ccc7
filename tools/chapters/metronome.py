# SPDX-License-Identifier: MIT
"""The metronome, in the rack and beside the notch, before a sound server of the tour's own that hears its beats."""

import os

from stage.sound import SoundServer
from stage.waiting import wait_for

from .looks import BLACK, wing_colours

# Points of a wing that are black beside the notch.
WING = 28


def play(tour):
    tour.begin()
    folder = os.path.join(os.path.dirname(os.path.dirname(tour.program)), "sound")
    with SoundServer(tour.stage, folder) as server:
        with tour.running(widgetLayout="metronome:2,clock", metronomeBPM=90):
            _play_wide(tour, server)
        with tour.running(widgetLayout="metronome,clock", metronomeBPM=208, metronomeSignature="7/8"):
            _play_small(tour, server)


def _play_wide(tour, server):
    screen = tour.screen
    screen.open_island()
    wait_for("the tempo", lambda: screen.find("90"))
    assert not server.is_heard(), "silence before the start"
    screen.scroll_down("BPM", 2)
    wait_for("two beats less", lambda: screen.find("88"))
    screen.press("Start")
    wait_for("the beats", server.is_heard)
    # Nothing lies under the pointer that shows a tip.
    screen.move_to(tour.stage.size[0] // 2, tour.stage.pixels(12))
    tour.picture("metronome-wide", "The wide metronome runs.")
    screen.rest()
    wait_for("the rack to close", lambda: not screen.find("Tap"))
    tour.picture("metronome-wings", "Closed, with the lamp that flashes with each beat, and the tempo.",
                 _shows_wings(screen))
    screen.open_island()
    screen.press("Stop")
    wait_for("silence", lambda: not server.is_heard())
    screen.rest()


def _shows_wings(screen):
    """A test of a picture: black wings, with the tempo in the right one and the lamp in the left one. It may be dark: beats
    and pictures can keep time with each other."""
    def test(path):
        left, right = wing_colours(screen, path, WING)
        return (all(colours.count(BLACK) > len(colours) // 2 for colours in (left, right)) and
                any(max(colour) > 20 for colour in left) and any(max(colour) > 100 for colour in right))

    return test


def _play_small(tour, server):
    screen = tour.screen
    screen.open_island()
    screen.press("Start")
    wait_for("the beats", server.is_heard)
    screen.move_to(tour.stage.size[0] // 2, tour.stage.pixels(12))
    tour.picture("metronome-small", "The small metronome runs, in seven eighths.")
    screen.press("Stop")
    screen.rest()
    tour.open_settings()
    screen.press("Metronome")
    wait_for("the tab", lambda: screen.find("Downbeat accent"))
    screen.press("Sound")
    screen.press("Beep")
    wait_for("a sample of the sound", server.is_heard)
    tour.picture("settings-metronome", "The metronome's tab: a sound that is picked is heard.")
    tour.close_settings()
