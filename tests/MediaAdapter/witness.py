#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Tells what all media players on the bus say and when: prints "ready", and then for each of their signals a JSON list of the
moment, on the monotonic clock, and of what that player has said by then."""

import json
import time

import dbus
import dbus.mainloop.glib
from gi.repository import GLib

PLAYER = "org.mpris.MediaPlayer2.Player"
PREFIX = "org.mpris.MediaPlayer2."
PATH = "/org/mpris/MediaPlayer2"


class Witness:
    def __init__(self):
        self.bus = dbus.SessionBus()
        self.players = {}
        self.bus.add_signal_receiver(self.properties_changed, "PropertiesChanged", dbus.PROPERTIES_IFACE, path=PATH,
                                     sender_keyword="sender")
        self.bus.add_signal_receiver(self.seeked, "Seeked", PLAYER, path=PATH, sender_keyword="sender")
        self.bus.add_signal_receiver(self.owner_changed, "NameOwnerChanged", dbus.BUS_DAEMON_IFACE)

    def tell(self, sender, **more):
        moment = time.monotonic()
        said = self.players.get(sender, {})
        metadata = said.get("Metadata", {})
        print(json.dumps([moment, {"name": said.get("name"), "status": said.get("PlaybackStatus", ""),
                                   "title": metadata.get("xesam:title", ""),
                                   "artist": ", ".join(metadata.get("xesam:artist", [])), **more}]), flush=True)

    def properties_changed(self, interface, changed, _, sender):
        if interface == PLAYER and sender in self.players:
            self.players[sender].update(changed)
            self.tell(sender)

    def seeked(self, position, sender):
        self.tell(sender, position=position / 1e6)

    def owner_changed(self, name, before, owner):
        if not name.startswith(PREFIX):
            return
        self.players.pop(before, None)
        if owner:
            self.players[owner] = {"name": name}
            # What it says meanwhile is newer.
            self.bus.call_async(owner, PATH, dbus.PROPERTIES_IFACE, "GetAll", "s", [PLAYER],
                                lambda all_of_it: self.add(owner, all_of_it), lambda error: None)
        else:
            self.tell("")

    def add(self, owner, properties):
        if owner in self.players:
            self.players[owner] = {**properties, **self.players[owner]}
            self.tell(owner)


if __name__ == "__main__":
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    witness = Witness()
    # The bus has taken up all the rules before by the time it answers.
    witness.bus.get_name_owner(dbus.BUS_DAEMON_NAME)
    print(json.dumps("ready"), flush=True)
    GLib.MainLoop().run()
