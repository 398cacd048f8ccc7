# SPDX-License-Identifier: MIT
"""Music beside the closed island and in the rack: of Spotify, of another player beside it, and of none."""

import os
import time

from stage.players import Player
from stage.waiting import wait_for

from .looks import is_bare, shows_wings

ARTIST = "Marta Valdt"
# Points of a wing that are black beside the notch.
WING = 30


def play(tour):
    tour.begin()
    cover = os.path.join(tour.stage.home, "cover.png")
    tour.stage.run("convert", "-size", "300x300", "gradient:#f0b060-#402060", "-fill", "#ffe0b0", "-draw",
                   "circle 150,140 150,80", cover, check=True)
    with Player(tour.stage, "spotify", "spotify") as spotify:
        with tour.running(widgetLayout="music:2,clock"):
            _play_wide(tour, spotify, cover)
        with Player(tour.stage, "firefox.instance_1_5", "firefox") as browser, tour.running(widgetLayout="music,clock"):
            _play_two(tour, spotify, browser)
    _play_none(tour)


def _play_wide(tour, spotify, cover):
    screen = tour.screen
    spotify.play("Slow Harbour", ARTIST, (243, 102), cover)
    tour.picture("music-wings", "Closed, with the cover of what plays beside the notch, and bars that move.",
                 shows_wings(screen, WING))
    screen.open_island()
    for text in ("Spotify", "Slow Harbour", ARTIST, "4:03"):
        wait_for(text, lambda text=text: screen.find(text))
    tour.picture("music-wide", "The wide music widget, with the keys of Spotify.")
    for key, call in (("Next", "Next"), ("Previous", "Previous"), ("Pause", "PlayPause")):
        screen.press(key)
        _expect_call(spotify, call)
    spotify.pause()
    wait_for("the pause", lambda: screen.find("Play"))
    screen.rest()
    # Long enough that wings which stayed would show.
    time.sleep(11)
    tour.picture("music-gone", "Closed: the wings of music that was paused have gone after ten seconds.", is_bare(screen))


def _play_two(tour, spotify, browser):
    """The browser plays after Spotify was paused; told to leave other players out, the island goes back to Spotify."""
    screen = tour.screen
    spotify.play("Slow Harbour", ARTIST, (243, 102), status="Paused")
    screen.open_island()
    wait_for("Spotify's track", lambda: screen.find("Slow Harbour"))
    browser.play("A field recording of a long night by the sea", "Night Station", (4324, 3500))
    wait_for("the browser's track", lambda: screen.find("Firefox"))
    tour.picture("music-two", "The small music widget: a browser plays, after Spotify was paused.")
    screen.press("Pause")
    _expect_call(browser, "PlayPause")
    assert spotify.calls() == [], "the other player is told nothing"
    screen.rest()
    tour.open_settings()
    screen.press("Music")
    wait_for("Spotify, which can be controlled", lambda: screen.find("Allowed. The music keys control Spotify."))
    screen.press("Show other apps")
    tour.picture("settings-music", "The music tab: other players are left out.")
    tour.close_settings()
    screen.open_island()
    wait_for("Spotify's track again", lambda: screen.find("Slow Harbour"))
    screen.rest()


def _play_none(tour):
    with tour.running(widgetLayout="music,clock"):
        tour.screen.open_island()
        wait_for("the way to Spotify", lambda: tour.screen.find("Open Spotify"))
        tour.picture("music-none", "Nothing plays.")
        tour.screen.rest()


def _expect_call(player, call):
    heard = []
    wait_for(f"{call} to reach the player", lambda: heard.extend(player.calls()) or call in heard)
    assert heard == [call], f"the player heard {heard}"
