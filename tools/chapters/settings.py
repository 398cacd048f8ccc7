# SPDX-License-Identifier: MIT
"""The closed island, and the settings window, through which the hooks of both agents are put in."""

import os

from stage.waiting import wait_for

from .looks import is_bare


def play(tour):
    tour.begin(has_hooks=False)
    with tour.running():
        tour.picture("closed", "Closed: the black of a notch, and nothing else.", is_bare(tour.screen))
        tour.open_settings()
        tour.picture("settings-general", "A second start opens the settings window of the first.")
        tour.show_agents_tab()
        tour.picture("settings-agents", "The agents' tab: nothing is installed yet.")
        tour.install_hooks()
        tour.picture("settings-installed", "The hooks of both agents are in.")
        _play_trial(tour)
        _play_dark(tour)
        tour.close_settings()
    tour.stage.keep()


def _play_trial(tour):
    """A made-up prompt goes through the installed script and is answered on the island."""
    screen = tour.screen
    wait_for("the key", lambda: screen.is_enabled("Try It"))
    screen.press("Try It")
    wait_for("the made-up prompt", lambda: screen.is_enabled("Allow"))
    tour.picture("try-it", "Try It: a made-up prompt has come by the installed script, without any agent.")
    screen.press("Allow")
    wait_for("what came back", lambda: screen.find("It works: you allowed it. Nothing was run."))
    screen.rest()
    tour.picture("try-it-answered", "What came back of the made-up prompt.")


def _play_dark(tour):
    """The desktop's choice changes while the window is open."""
    folder = os.path.join(tour.stage.env.get("XDG_CONFIG_HOME", os.path.join(tour.stage.home, ".config")), "gtk-4.0")
    os.makedirs(folder, exist_ok=True)
    light = _brightness(tour)
    with open(os.path.join(folder, "settings.ini"), "w", encoding="utf-8") as file:
        file.write(f"[Settings]\ngtk-application-prefer-dark-theme={'true' if light > 128 else 'false'}\n")
    wait_for("the other look", lambda: abs(_brightness(tour) - light) > 100)
    tour.picture("settings-other-look", "The same tab after the desktop has changed between light and dark.")


def _brightness(tour):
    """Of the window's edge below the tabs, from 0 to 255."""
    x, y = tour.screen.middle_of("General")
    return max(tour.screen.pixels(f"1x1+{x}+{y + tour.stage.pixels(40)}")[0])
