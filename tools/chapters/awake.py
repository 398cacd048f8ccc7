# SPDX-License-Identifier: MIT
"""Keep awake, and the other sizes of the widgets, on KDE, where two services share the work, and where no desktop's
service does it."""

import re

from stage.waiting import wait_for

from .timer import SHARE
from .tour import TYPED

_POWER = "org.freedesktop.PowerManagement"
_SAVER = "org.freedesktop.ScreenSaver"


def play(tour):
    tour.begin()
    agent, _ = tour.at_work(TYPED)
    agent.session("idle")
    with tour.services.playing("kde"), tour.running(widgetLayout="timer:1,meters:2,keepAwake:2", keepAwakeDisplay=True):
        _play_timed(tour)
        _play_endless(tour)
    _play_no_desktop(tour)


def _expect_taken(services, number):
    own = "for “Veslora: Keep Awake” of Veslora"
    services.expect(f"{_POWER}: hold {number} against sleep, {own}", f"{_SAVER}: hold {number} against idleness, {own}")


def _expect_given_back(services, number):
    services.expect(f"{_POWER}: hold {number} is given back", f"{_SAVER}: hold {number} is given back")


def _play_timed(tour):
    screen = tour.screen
    screen.open_island()
    wait_for("the processor's share", lambda: screen.find("CPU") and screen.find(SHARE) and not screen.find("--"))
    assert screen.find(re.compile(r"user \d+% · sys \d+%", re.I)), "the wide meters tell more"
    screen.press("15")
    wait_for("a quarter of an hour", lambda: screen.find("15:00"))
    tour.picture("rack-others", "The rack with the small picker, the wide meters, and wide keep awake at rest.")
    screen.press("Start")
    screen.press("1H")
    _expect_taken(tour.services, 1)
    wait_for("the end of the session", lambda: screen.find(re.compile(r"Until \d\d:\d\d · screen on")))
    screen.press("Pause")
    wait_for("the pause", lambda: screen.find("Paused"))
    tour.picture("awake-display", "The small timer paused, and a session that keeps the display on too.")
    screen.press("Cancel the timer")
    wait_for("the picker", lambda: screen.find("Start"))
    screen.rest()
    wait_for("the wings", lambda: screen.find(re.compile(r"59M|1:00")))
    tour.picture("awake-wings", "Closed, with what is left of the session.")
    screen.open_island()
    screen.press("Stop")
    _expect_given_back(tour.services, 1)


def _play_endless(tour):
    screen = tour.screen
    screen.press("Stay awake until stopped")
    _expect_taken(tour.services, 2)
    wait_for("no end", lambda: screen.find("Until stopped · screen on"))
    tour.picture("awake-endless", "Kept awake until stopped.")
    screen.rest()
    wait_for("the wings", lambda: not screen.find("Stop"))
    tour.picture("awake-endless-wings", "Closed, with a session without an end.")
    screen.open_island()
    screen.press("Stop")
    _expect_given_back(tour.services, 2)
    screen.rest()


def _play_no_desktop(tour):
    """Where no desktop serves, the login manager does; it takes back what a program leaves that is killed."""
    name = "org.freedesktop.login1"
    with tour.services.playing("login"), tour.running(widgetLayout="keepAwake,clock,timer") as veslora:
        tour.screen.open_island()
        tour.screen.press("2H")
        tour.services.expect(f"{name}: hold 1 against idle (block), for “Veslora: Keep Awake” of Veslora")
        tour.screen.rest()
        veslora.kill()
        veslora.wait()
        tour.services.expect(f"{name}: hold 1 is given back")
