#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""A media player that does what it is told: one JSON list a line on its standard input, of a word and its arguments.
Prints "ready" once it has its name on the bus, and then a line for each request.

    set NAME SIGNATURE VALUE ...   changes properties and tells of them by one signal
    keep NAME SIGNATURE VALUE ...  changes them in silence
    invalidate NAME ...            says that these have changed, without their values
    seek MICROSECONDS              changes the position and tells of it
    seeked MICROSECONDS NAME ...   tells of a position that it does not answer with yet, after it has done as "set" does
    flood COUNT                    changes the title that often, one signal each
    timed REQUEST ...              prints when it began, on the monotonic clock
    calls                          prints the calls that came since the last time
"""

import json
import sys
import time

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

PLAYER = "org.mpris.MediaPlayer2.Player"
ROOT = "org.mpris.MediaPlayer2"
PATH = "/org/mpris/MediaPlayer2"
# No value is a dictionary's whole but that of the metadata: pairs of a signature and a value.
TYPES = {}
TYPES |= {"s": dbus.String, "o": dbus.ObjectPath, "b": dbus.Boolean, "x": dbus.Int64, "t": dbus.UInt64,
          "i": dbus.Int32, "d": dbus.Double, "as": lambda value: dbus.Array(value, signature="s"),
          "ay": lambda value: dbus.Array(value, signature="y"),
          "a{sv}": lambda value: dbus.Dictionary({key: TYPES[kind](one) for key, (kind, one) in value.items()},
                                                 signature="sv")}


def triples(words):
    return {name: TYPES[kind](value) for name, kind, value in zip(words[0::3], words[1::3], words[2::3])}


class Player(dbus.service.Object):
    def __init__(self, name, bus, entry):
        self.properties = {ROOT: {"DesktopEntry": entry} if entry else {}, PLAYER: {}}
        self.calls = []
        super().__init__(bus, PATH)
        self.name = dbus.service.BusName(name, bus)

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):  # pylint: disable=invalid-name
        return self.properties[interface]

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, interface, name):  # pylint: disable=invalid-name
        return self.properties[interface][name]

    @dbus.service.signal(dbus.PROPERTIES_IFACE, signature="sa{sv}as")
    def PropertiesChanged(self, interface, changed, invalidated):  # pylint: disable=invalid-name
        pass

    @dbus.service.signal(PLAYER, signature="x")
    def Seeked(self, position):  # pylint: disable=invalid-name
        pass

    @dbus.service.method(PLAYER)
    def PlayPause(self):  # pylint: disable=invalid-name
        self.calls.append("PlayPause")

    @dbus.service.method(PLAYER)
    def Play(self):  # pylint: disable=invalid-name
        self.calls.append("Play")

    @dbus.service.method(PLAYER)
    def Next(self):  # pylint: disable=invalid-name
        self.calls.append("Next")

    @dbus.service.method(PLAYER)
    def Previous(self):  # pylint: disable=invalid-name
        self.calls.append("Previous")

    def change(self, values, is_told=True):
        self.properties[PLAYER].update(values)
        if is_told:
            self.PropertiesChanged(PLAYER, values, [])

    def flood(self, count):
        for number in range(count):
            self.change({"Metadata": TYPES["a{sv}"]({"xesam:title": ["s", f"Title {number}"]})})

    def obey(self, word, *arguments):
        if word in ("set", "keep"):
            self.change(triples(arguments), word == "set")
        elif word == "invalidate":
            self.PropertiesChanged(PLAYER, {}, arguments)
        elif word == "seek":
            self.change({"Position": dbus.Int64(arguments[0])}, False)
            self.Seeked(arguments[0])
        elif word == "seeked":
            self.change(triples(arguments[1:]))
            self.Seeked(arguments[0])
        elif word == "flood":
            self.flood(arguments[0])
        elif word == "timed":
            moment = time.monotonic()
            self.obey(*arguments)
            return moment
        elif word == "calls":
            calls, self.calls = self.calls, []
            return calls
        return "done"


def say(answer):
    print(json.dumps(answer), flush=True)


def main(name, entry=""):
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    loop = GLib.MainLoop()
    player = Player(name, bus, entry)

    def read(*_):
        line = sys.stdin.readline()
        if not line:
            loop.quit()
            return False
        say(player.obey(*json.loads(line)))
        return True

    GLib.io_add_watch(sys.stdin.fileno(), GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, read)
    say("ready")
    loop.run()


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2] if len(sys.argv) > 2 else "")
