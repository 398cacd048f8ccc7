# SPDX-License-Identifier: MIT
"""The timer from the picker to the alert, and on GNOME, while it runs, what keeps the machine awake."""

import re
import time

from stage.waiting import wait_for

from .looks import URGENT, holds_tint, wing_colours
from .tour import TYPED

SHARE = re.compile(r"\d+%")
_CLOCK = re.compile(r"\d\d:\d\d")
_LAST_SECONDS = re.compile(r"0:0\d")


def play(tour):
    tour.begin()
    agent, _ = tour.at_work(TYPED)
    agent.session("idle")
    with tour.services.playing("gnome", "notifications"), tour.running(widgetLayout="timer,meters,clock,keepAwake"):
        end = _play_start(tour)
        _play_gnome(tour, agent)
        _play_end(tour, end)


def _play_start(tour):
    """Sets a minute and starts it; tells when it ends, on the monotonic clock."""
    screen = tour.screen
    screen.open_island()
    wait_for("the picker", lambda: screen.find("Start"))
    wait_for("the processor's share", lambda: screen.find("CPU") and screen.find("MEM") and screen.find(SHARE) and
             not screen.find("--"))
    before = time.strftime("%H:%M")
    shown = screen.find(_CLOCK).get_name()
    assert shown in (before, time.strftime("%H:%M")), f"the clock shows {shown}"
    assert screen.find("Sleeps as usual"), "nothing keeps the machine awake"
    tour.picture("timer-picker", "The rack with the timer's picker, the small meters, the clock, and keep awake at rest.")
    screen.press("5")
    wait_for("five minutes", lambda: screen.find("5:00"))
    screen.scroll_down("5:00", 4)
    wait_for("one minute, the least", lambda: screen.find("1:00"))
    screen.press("Start")
    started = time.monotonic()
    wait_for("the countdown", lambda: screen.find(re.compile(r"0:5\d")))
    screen.press("Pause")
    wait_for("the pause", lambda: screen.find("Paused"))
    paused = time.monotonic()
    screen.press("Resume")
    wait_for("the countdown", lambda: screen.find("Pause"))
    ends = started + 60 + time.monotonic() - paused
    tour.picture("timer-running", "The timer runs: set by the wheel to one minute, the least there is.")
    screen.rest()
    wait_for("the wings", lambda: not screen.find("Cancel the timer"))
    tour.picture("timer-wings", "Closed, with the time left and the fuse beside the notch.")
    return ends


def _play_gnome(tour, agent):
    """A session of keep awake, with the display from the settings on, and one that an agent's work holds."""
    screen, services = tour.screen, tour.services
    name = "org.gnome.SessionManager"
    own = "for “Veslora: Keep Awake” of org.veslora.Veslora"
    services.expect()
    screen.open_island()
    screen.press("30M")
    services.expect(f"{name}: hold 1 against sleep, {own}")
    screen.press("+")
    wait_for("three quarters of an hour", lambda: screen.find(re.compile(r"0:4[45]:\d\d")))
    tour.picture("awake-timed", "Kept awake for a time, beside the running timer.")
    tour.open_settings()
    screen.rest()
    wait_for("the rack to close", lambda: not screen.find("Cancel the timer"))
    screen.press("Keep Awake")
    screen.press("Keep the display on")
    services.expect(f"{name}: hold 2 against sleep and idleness, {own}", f"{name}: hold 1 is given back")
    tour.picture("settings-awake", "The keep-awake tab: the display is to stay on too.")
    tour.close_settings()
    screen.open_island()
    screen.press("Stop")
    services.expect(f"{name}: hold 2 is given back")
    agent.session("busy")
    services.expect(f"{name}: hold 3 against sleep, for “Veslora: Claude Code is working” of org.veslora.Veslora")
    wait_for("its reason", lambda: screen.find("An agent is working"))
    tour.picture("awake-agent", "An agent's work keeps the machine awake, but never the display.")
    agent.session("idle")
    services.expect(f"{name}: hold 3 is given back")
    screen.rest()


def _is_urgent(screen):
    """A test of a picture: the wings of the last seconds, the time and the fuse in the urgent colour. The fuse may be less
    than a pixel long, and the time in the dark half of its flicker."""
    def test(path):
        return all(holds_tint(colours, URGENT) for colours in wing_colours(screen, path))

    return test


def _play_end(tour, end):
    """The last ten seconds in the wings, the alert, and another round that is cancelled."""
    screen = tour.screen
    assert time.monotonic() < end - 7, "what is played meanwhile takes no longer than the timer"
    wait_for("the last seconds", lambda: screen.find(_LAST_SECONDS), 60)
    tour.picture("timer-urgent", "The last ten seconds, in the urgent colour; the time flickers.", _is_urgent(screen))
    wait_for("the alert", lambda: screen.find("DONE") and screen.find("Restart"))
    assert abs(time.monotonic() - end) < 2, "the timer ends when it should"
    tour.services.expect("org.freedesktop.Notifications: notification 1 of Veslora, “Timer done”: “Your 1 min timer finished.”")
    tour.picture("timer-done", "The timer is done: the island drops down, and a notification tells of it.")
    screen.press("Restart")
    screen.rest()
    wait_for("the wings of another minute", lambda: not screen.find("Restart") and screen.find(re.compile(r"0:5\d")))
    screen.open_island()
    screen.press("Cancel the timer")
    wait_for("the picker", lambda: screen.find("Start"))
    tour.services.expect()
    screen.rest()
