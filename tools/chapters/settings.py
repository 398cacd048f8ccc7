# SPDX-License-Identifier: MIT
"""The closed island, and the settings window, through which the hooks of both agents are put in."""

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
        tour.close_settings()
    tour.stage.keep()
