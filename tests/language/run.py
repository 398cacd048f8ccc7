#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Runs the program as a user who reads German has it, on a display of its own, and sees that the desktop is told of it in
German: what the status menu and the settings window say."""

import argparse
import os
import subprocess
import sys
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tools"))

# pylint: disable=wrong-import-position # the stage lies beside the tools
from stage.program import running
from stage.stage import Stage
from stage.waiting import wait_for

PROGRAM = None

# Lists the rows of the menu of the first item that comes to the desktop.
PANEL = r'''
import dbus, dbus.mainloop.glib, dbus.service
from gi.repository import GLib

dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
loop = GLib.MainLoop()
NAME = "org.kde.StatusNotifierWatcher"

class Watcher(dbus.service.Object):
    @dbus.service.method(NAME, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, item, sender):
        menu = dbus.Interface(bus.get_object(sender, "/StatusMenu"), "com.canonical.dbusmenu")
        def show(revision, root):
            for row in root[2]:
                print(row[1].get("label", ""), flush=True)
            loop.quit()
        menu.GetLayout(0, -1, dbus.Array([], "s"), reply_handler=show, error_handler=print)

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return True

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return {"IsStatusNotifierHostRegistered": True}

watcher = Watcher(bus, "/StatusNotifierWatcher")
name = dbus.service.BusName(NAME, bus)
print("ready", flush=True)
GLib.timeout_add_seconds(20, loop.quit)
loop.run()
'''


class GermanTests(unittest.TestCase):
    def setUp(self):
        self.stage = self.enterContext(Stage())
        # No such locale need be installed: the variables decide.
        self.stage.env["LANG"] = "de_DE.UTF-8"

    def test_the_status_menu_is_german(self):
        panel = self.stage.start("/usr/bin/python3", "-c", PANEL, stdout=subprocess.PIPE, text=True)
        with panel.stdout:
            self.assertEqual(panel.stdout.readline(), "ready\n")
            with running(self.stage, PROGRAM):
                rows = [line.strip() for line in panel.stdout]
        self.assertEqual(rows, ["Einstellungen\u00a0…", "Nach Aktualisierungen suchen\u00a0…", "",
                                "Meldungen für 1 Stunde anhalten", "Meldungen bis morgen anhalten", "",
                                "Veslora beenden"])

    def test_the_settings_are_german_and_what_programs_read_is_not(self):
        with running(self.stage, PROGRAM):
            self.stage.run(PROGRAM, "settings", check=True)
            wait_for("the window", lambda: self.stage.run("xdotool", "search", "--name", "Veslora.*Einstellungen"))
            self.assertIn('"island":"closed"', self.stage.run(PROGRAM, "status", check=True))
            report = self.stage.run(PROGRAM, "report", check=True)
            self.assertIn("\nwindow manager: ", report)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    options, rest = parser.parse_known_args()
    PROGRAM = os.path.abspath(options.program)
    unittest.main(argv=[sys.argv[0], *rest])
