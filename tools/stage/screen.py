# SPDX-License-Identifier: MIT
"""What is on screen: controls by their accessible names, the pointer, and pixels."""

import contextlib
import os
import re
import subprocess

import gi

from .waiting import WITNESSES, wait_for

gi.require_version("Atspi", "2.0")
# Its version has to be asked for first.
from gi.repository import Atspi  # pylint: disable=wrong-import-position,wrong-import-order

# A row of pixels of the open island below its widgets.
RACK_FOOT = 167


def _walk(node, depth=0):
    if node is None or depth > 25:
        return
    yield node
    with contextlib.suppress(Exception):
        for index in range(node.get_child_count()):
            yield from _walk(node.get_child_at_index(index), depth + 1)


class Screen:
    """Eyes and hands on a stage. There can be one in a process, whose environment it makes the stage's."""

    def __init__(self, stage):
        self.stage = stage
        # The accessibility library reads the environment of this process.
        os.environ.update(stage.env)
        Atspi.init()
        WITNESSES.append(self.words)

    @staticmethod
    def words():
        """All names that can be seen, as a line of text."""
        names = []
        for node in _walk(Atspi.get_desktop(0)):
            with contextlib.suppress(Exception):
                if node.get_name() and node.get_state_set().contains(Atspi.StateType.SHOWING):
                    names.append(node.get_name())
        return "to be seen: " + ", ".join(names)

    @staticmethod
    def find(name, role=None):
        """The control of that name, or of one that a pattern describes, that can be seen, or nothing."""
        is_it = name.fullmatch if isinstance(name, re.Pattern) else name.__eq__
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for node in _walk(desktop):
            with contextlib.suppress(Exception):
                if not is_it(node.get_name()) or (role and node.get_role_name() != role):
                    continue
                if node.get_state_set().contains(Atspi.StateType.SHOWING):
                    return node
        return None

    def is_enabled(self, name):
        node = self.find(name)
        return bool(node) and node.get_state_set().contains(Atspi.StateType.ENABLED)

    def middle_of(self, name):
        """Where the middle of a control is, in pixels."""
        # Qt 6.4 tells it in points.
        frame = wait_for(f"“{name}”", lambda: self.find(name)).get_extents(Atspi.CoordType.SCREEN)
        return self.stage.pixels(frame.x + frame.width / 2), self.stage.pixels(frame.y + frame.height / 2)

    def resting_middle_of(self, name):
        """The same of one that may be on its way, once it has arrived."""
        seen = []

        def rests():
            seen.append(self.middle_of(name))
            return seen[-2:-1] == seen[-1:]

        wait_for(f"“{name}” to rest", rests)
        return seen[-1]

    def move_to(self, x, y):
        """Moves there in steps, as a hand does."""
        place = dict(line.split("=") for line in self.stage.run("xdotool", "getmouselocation", "--shell").split())
        dx, dy = x - int(place["X"]), y - int(place["Y"])
        for step in range(1, 9):
            self.stage.run("xdotool", "mousemove_relative", "--sync", "--",
                           str(dx * step // 8 - dx * (step - 1) // 8), str(dy * step // 8 - dy * (step - 1) // 8))

    def point_at(self, name):
        self.move_to(*self.middle_of(name))

    def press(self, name):
        """Presses the control of that name with the pointer, once it can be pressed."""
        wait_for(f"“{name}” to be enabled", lambda: self.is_enabled(name))
        self.point_at(name)
        self.stage.run("xdotool", "click", "1")

    def act(self, name, role, action):
        """Does what an assistive program would, without any pointer."""
        node = wait_for(f"“{name}”", lambda: self.find(name, role))
        names = [Atspi.Action.get_action_name(node, index) for index in range(Atspi.Action.get_n_actions(node))]
        Atspi.Action.do_action(node, names.index(action))

    def scroll_down(self, name, notches):
        self.point_at(name)
        self.stage.run("xdotool", "click", "--repeat", str(notches), "--delay", "40", "5")

    def open_island(self):
        """Opens the rack and waits until it is there: what it does not show yet can't be pressed."""
        width = self.stage.size[0]
        self.move_to(width // 2, self.stage.pixels(12))
        foot = []

        def is_there():
            # A program that has only just started hears of the pointer when it moves again.
            self.stage.run("xdotool", "mousemove_relative", "--sync", "--", str(1 - len(foot) % 2 * 2), "0")
            row = self.pixels(f"{width}x1+0+{self.stage.pixels(RACK_FOOT)}")
            foot.append(row)
            return (0, 0, 0) == row[width // 2] and foot[-2:-1] == [row]

        wait_for("the rack to be there", is_there)

    def rest(self):
        """Takes the pointer out of the way."""
        self.move_to(self.stage.size[0] // 2, self.stage.size[1] - self.stage.pixels(120))

    def pixels(self, area, path=None):
        """Red, green and blue of each pixel of an area, row by row, of a picture or else of what is on screen."""
        source = ["convert", path] if path else ["import", "-window", "root"]
        raw = subprocess.run([*source, "-crop", area, "-depth", "8", "rgb:-"], env=self.stage.env, check=True,
                             capture_output=True, timeout=20).stdout
        return [tuple(raw[at:at + 3]) for at in range(0, len(raw), 3)]
