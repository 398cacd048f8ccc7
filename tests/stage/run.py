#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Sees that tools/display raises what it says, and that nothing of it outlives its caller."""

import os
import shutil
import signal
import subprocess
import sys
import time
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOL = os.path.join(ROOT, "tools", "display")


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

    def test_any_window_manager_that_is_known_can_be_named(self):
        for name in ("openbox", "i3"):
            display = self.raised()
            self.assertRegex(display.ask(f"window-manager {name}"), rf"^window-manager {name} \d+$")
            check = display.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK").split()[-1]
            self.assertIn(f'"{name}"', display.run("xprop", "-id", check, "_NET_WM_NAME").lower())

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


if __name__ == "__main__":
    unittest.main()
