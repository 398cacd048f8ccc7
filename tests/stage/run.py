#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Sees that tools/display raises what it says, and that nothing of it outlives whoever asked for it; and that
tools/compare-pictures finds what differs, and that the tour plays no chapter that there is not."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOLS = os.path.join(ROOT, "tools")
TOOL = os.path.join(TOOLS, "display")


def is_running(process):
    try:
        with open(f"/proc/{process}/stat", encoding="utf-8") as file:
            return file.read().rpartition(")")[2].split()[0] != "Z"
    except FileNotFoundError:
        return False


def children_of(process):
    try:
        with open(f"/proc/{process}/task/{process}/children", encoding="utf-8") as file:
            return [int(child) for child in file.read().split()]
    except FileNotFoundError:
        return []


def socket_of(display):
    return f"/tmp/.X11-unix/X{display.lstrip(':')}"


class Raised:
    """The tool in use by somebody."""

    def __init__(self, program):
        self.program = program
        self.name, self.folder = self.line().split()[1:]
        self.pieces = set(children_of(self.program.pid))

    def line(self):
        return self.program.stdout.readline().strip()

    def ask(self, request):
        self.program.stdin.write(request + "\n")
        self.program.stdin.flush()
        answer = self.line()
        self.pieces.update(children_of(self.program.pid))
        return answer

    def run(self, *command):
        return subprocess.run(command, env={"PATH": os.environ["PATH"], "DISPLAY": self.name}, capture_output=True, text=True,
                              check=False, timeout=20).stdout

    def left(self):
        """What is still there a moment after the end."""
        end = time.monotonic() + 10
        while any(map(is_running, self.pieces)) and time.monotonic() < end:
            time.sleep(0.01)
        return [process for process in self.pieces if is_running(process)]


class DisplayTests(unittest.TestCase):
    def raised(self, *arguments):
        environment = {"PATH": os.environ["PATH"], "DISPLAY": ":nobody's"}
        return Raised(self.enterContext(subprocess.Popen([TOOL, *arguments], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                                         text=True, env=environment)))

    def test_has_the_size_that_is_asked_for_and_nothing_else(self):
        display = self.raised("800x600")
        self.assertIn("dimensions:    800x600 pixels", display.run("xdpyinfo"))
        self.assertNotIn("window id", display.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        self.assertTrue(os.path.exists(socket_of(display.name)))
        self.assertEqual(os.listdir(display.folder), [])
        self.assertEqual(os.stat(display.folder).st_mode & 0o777, 0o700)

    def test_a_window_manager_manages_windows_as_soon_as_it_is_told_of(self):
        display = self.raised()
        self.assertRegex(display.ask("window-manager"), r"^window-manager \d+$")
        self.assertIn("window id", display.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        self.assertEqual(display.run("xprop", "-root", "_NET_CLIENT_LIST").strip(), "_NET_CLIENT_LIST(WINDOW): window id #")

    def test_a_compositor_comes_and_goes_and_comes_back(self):
        display = self.raised()
        first = display.ask("compositor")
        self.assertEqual(display.ask("kill compositor"), "kill compositor done")
        self.assertFalse(is_running(int(first.split()[1])))
        second = display.ask("compositor")
        self.assertRegex(second, r"^compositor \d+$")
        self.assertNotEqual(first, second)

    def test_raises_at_once_what_its_arguments_name(self):
        display = self.raised("640x480", "window-manager", "bus", "bus")
        self.assertRegex(display.line(), r"^window-manager \d+$")
        addresses = {display.line(), display.line()}
        self.assertEqual(len(addresses), 2, "each bus is another one")
        self.assertTrue(all(address.startswith("bus unix:") for address in addresses))

    def test_takes_everything_down_when_its_input_closes(self):
        display = self.raised()
        display.ask("window-manager")
        display.ask("compositor")
        with open(os.path.join(display.folder, "left"), "w", encoding="utf-8") as file:
            file.write("something")
        display.program.stdin.close()
        self.assertEqual(display.program.wait(20), 0)
        self.assertEqual(display.left(), [])
        self.assertFalse(os.path.exists(display.folder))
        self.assertFalse(os.path.exists(socket_of(display.name)), "the server had the time to say goodbye")

    def test_takes_everything_down_when_it_is_asked_to_end(self):
        display = self.raised()
        display.ask("window-manager")
        display.program.send_signal(signal.SIGTERM)
        self.assertEqual(display.program.wait(20), 0)
        self.assertEqual(display.left(), [])
        self.assertFalse(os.path.exists(display.folder))

    def test_nothing_is_left_when_it_is_killed(self):
        display = self.raised()
        display.ask("window-manager")
        display.ask("compositor")
        display.program.kill()
        self.assertEqual(display.left(), [])
        shutil.rmtree(display.folder)

    def test_nothing_is_left_when_its_parent_is_killed(self):
        script = ("import subprocess, sys, time\n"
                  "tool = subprocess.Popen([sys.argv[1]], stdin=subprocess.PIPE)\n"
                  "time.sleep(600)")
        with subprocess.Popen([sys.executable, "-c", script, TOOL], stdout=subprocess.PIPE, text=True) as parent:
            self.addCleanup(parent.kill)
            _, folder = parent.stdout.readline().split()[1:]
            [tool] = children_of(parent.pid)
            [server] = children_of(tool)
            parent.kill()
            # The end of this pipe is the end of the tool.
            self.assertEqual(parent.stdout.read(), "")
        self.assertFalse(is_running(server))
        self.assertFalse(os.path.exists(folder))

    def test_says_what_does_not_start_and_ends_with_1(self):
        display = self.raised()
        self.assertEqual(display.ask("cherry"), "error nobody knows what “cherry” is")
        self.assertEqual(display.program.wait(20), 1)
        self.assertEqual(display.left(), [])

    def test_a_display_that_can_not_be_is_told_of(self):
        tool = subprocess.run([TOOL, "no size"], stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False,
                              timeout=30)
        self.assertEqual((tool.stdout, tool.returncode), ("error Xvfb does not start\n", 1))


class ComparePicturesTests(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        for side in ("before", "after"):
            os.mkdir(os.path.join(self.folder, side))

    def draw(self, side, name, *commands, size="144x90"):
        subprocess.run(["convert", "-size", size, "xc:gray", *commands, os.path.join(self.folder, side, f"{name}.png")],
                       check=True, timeout=20)

    def compared(self, *options):
        masks = os.path.join(self.folder, "masks")
        with open(masks, "w", encoding="utf-8") as file:
            file.write("# what moves\n*-clock 200x100+1000+300 the hands\n")
        done = subprocess.run([os.path.join(TOOLS, "compare-pictures"), "--masks", masks, *options,
                               os.path.join(self.folder, "before"), os.path.join(self.folder, "after")],
                              capture_output=True, text=True, check=False, timeout=60)
        return done.stdout.splitlines(), done.returncode

    def test_finds_where_pictures_differ(self):
        self.draw("before", "1-box", "-fill", "red", "-draw", "rectangle 10,20 13,21")
        self.draw("after", "1-box", "-fill", "blue", "-draw", "rectangle 10,20 13,21")
        self.assertEqual(self.compared(), (["1-box.png: 8 pixels differ in 4x2+10+20", "1 of 1 differ"], 1))

    def test_looks_away_from_what_moves_at_any_scale_and_nowhere_else(self):
        for size, place in (("144x90", "105,35"), ("288x180", "210,70")):
            for side, colour in (("before", "red"), ("after", "blue")):
                for name in ("1-clock", "2-box"):
                    self.draw(side, name, "-fill", colour, "-draw", f"point {place}", size=size)
            left, top = place.split(",")
            self.assertEqual(self.compared(), (["1-clock.png: same", f"2-box.png: 1 pixels differ in 1x1+{left}+{top}",
                                                "1 of 2 differ"], 1))

    def test_misses_no_picture_unless_it_is_told_that_some_are_left_out(self):
        self.draw("before", "1-box")
        self.draw("after", "1-box")
        self.draw("before", "2-box")
        self.assertEqual(self.compared("--some"), (["1-box.png: same", "0 of 1 differ"], 0))
        lines, status = self.compared()
        self.assertEqual(lines[1], f"2-box.png: only in {os.path.join(self.folder, 'before')}")
        self.assertEqual(status, 1)


class TourTests(unittest.TestCase):
    def test_a_chapter_that_is_not_there_is_answered_by_those_that_are(self):
        command = [os.path.join(TOOLS, "tour"), "--only", "cherry"]
        tour = subprocess.run(command, capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual(tour.returncode, 2)
        for chapter in ("settings", "timer", "killed"):
            self.assertIn(chapter, tour.stderr)


if __name__ == "__main__":
    unittest.main()
