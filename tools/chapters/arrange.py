# SPDX-License-Identifier: MIT
"""The rack is arranged with a real pointer: pages turned, widgets dragged, sized, removed and added, and all of it kept."""

import re
import time

from stage.waiting import wait_for
from stage.windows import read_notes

LAYOUT = "timer,claude:2,clock,meters,keepAwake"
# Buttons of a wheel that is tilted.
LEFT, RIGHT = "6", "7"


def play(tour):
    tour.begin()
    agent, _ = tour.at_work()
    with tour.running(widgetLayout=LAYOUT, widgetSpacing=60, widgetSpacingAutomatic=False):
        agent.session("busy")
        tour.screen.open_island()
        _play_pages(tour)
        _play_drag(tour)
        _play_drag_to_next_page(tour)
        _play_keys(tour)
        _play_without_pointer(tour)
        _play_library(tour)
        _play_prompt(tour, agent)
        _play_press_elsewhere(tour)
        kept = _layout(tour)
    with tour.running_as_left():
        tour.screen.open_island()
        assert _layout(tour) == kept, "the arrangement outlives the program"
        wait_for("the second page's widget after a restart", lambda: tour.screen.find("Start"))


def _layout(tour):
    return tour.stage.read_settings()["widgetLayout"]


def _expect_layout(tour, text):
    wait_for(f"the arrangement {text}", lambda: _layout(tour) == text)


def _click(tour, button):
    tour.stage.run("xdotool", "click", button)


def _tilt(tour, button, name):
    """Tilts the wheel over the rack until the page with a control shows."""
    tour.screen.move_to(tour.stage.size[0] // 2, tour.stage.pixels(90))
    _click(tour, button)
    wait_for(f"the page with “{name}”", lambda: tour.screen.find(name))


def _grip(tour, name):
    """A place on the module that has a key of that name in its corner, where no key is."""
    x, y = tour.screen.resting_middle_of(name)
    return x - tour.stage.pixels(60), y + tour.stage.pixels(50)


def _take(tour, name):
    tour.screen.move_to(*_grip(tour, name))
    tour.stage.run("xdotool", "mousedown", "1")


def _carry(tour, x, y):
    """Moves in small steps, as a hand that drags does."""
    for _ in range(3):
        tour.screen.move_to(x, y)


def _drop(tour):
    tour.stage.run("xdotool", "mouseup", "1")


def _edit(tour, name):
    """Holds a widget, at the place of a control in it, until it can be edited."""
    tour.screen.point_at(name)
    tour.stage.run("xdotool", "mousedown", "1")
    wait_for("edit mode", lambda: tour.screen.find("Done"))
    _drop(tour)


def _play_pages(tour):
    wait_for("the first page", lambda: tour.screen.find("Start"))
    _tilt(tour, RIGHT, "1H")
    tour.picture("second-page", "The second page, turned up by a wheel that was tilted.")
    _tilt(tour, LEFT, "Start")


def _play_drag(tour):
    _edit(tour, "Start")
    assert not tour.screen.find("Cancel the timer"), "a key that is held is not pressed"
    tour.picture("editing", "Edit mode, after a widget was held.")
    _take(tour, "Remove Timer")
    x, y = _grip(tour, "Remove Agents")
    _carry(tour, x + tour.stage.pixels(20), y)
    tour.picture("dragging", "The timer on its way past the agents.")
    assert _layout(tour) == LAYOUT, "nothing is kept before it is dropped"
    _drop(tour)
    _expect_layout(tour, "claude:2,timer,clock,meters,keepAwake")


def _play_drag_to_next_page(tour):
    _take(tour, "Remove Timer")
    row = _grip(tour, "Remove Timer")[1]
    right = tour.screen.resting_middle_of("Remove Clock")[0]
    _carry(tour, right, row)
    wait_for("the next page to turn up", lambda: tour.screen.find("Remove Meters"))
    _carry(tour, tour.stage.size[0] // 2 - tour.stage.pixels(10), row)
    tour.picture("dragged-over", "The timer on the second page, to which it was carried.")
    _drop(tour)
    wait_for("the timer on the second page", lambda: re.fullmatch("claude:2,clock,(.*,)?timer(,.*)?", _layout(tour)))


def _play_keys(tour):
    tour.screen.press("Timer size 2 units")
    wait_for("the small timer", lambda: "timer:1" in _layout(tour).split(","))
    tour.screen.press("Remove Meters")
    wait_for("the meters to go", lambda: "meters" not in _layout(tour))


def _play_without_pointer(tour):
    before = _layout(tour)
    tour.screen.act("Keep Awake", "list item", "move left")
    wait_for("keep awake one place further left", lambda: _layout(tour) != before)
    tour.screen.act("Keep Awake", "list item", "move right")
    _expect_layout(tour, before)


def _play_library(tour):
    before = _layout(tour)
    tour.screen.press("+ Add")
    wait_for("the library", lambda: tour.screen.find("Back"))
    tour.picture("library", "The library, with the widgets that are not in the rack.")
    # The first of the list.
    tour.screen.press("Add")
    _expect_layout(tour, before + ",meters")
    assert tour.screen.find("Done"), "it is still being edited"


def _play_prompt(tour, agent):
    """A prompt that comes meanwhile sounds, and shows when the editing is done."""
    process = agent.ask()
    agent.wait_for_permission()
    # Time in which an alert would have come up.
    time.sleep(1)
    assert not tour.screen.find("Allow"), "no alert while the island is open"
    tour.screen.press("Done")
    tour.screen.rest()
    tour.screen.press("Allow")
    assert "allow" in tour.ended("A prompt while the rack was edited", process)
    agent.session("busy")


def _play_press_elsewhere(tour):
    tour.screen.open_island()
    _edit(tour, "Start")
    read_notes(tour.stage)
    tour.screen.rest()
    assert tour.screen.find("Done"), "the pointer may leave"
    _click(tour, "1")
    wait_for("edit mode to end", lambda: not tour.screen.find("Done"))
