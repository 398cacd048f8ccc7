# SPDX-License-Identifier: MIT
"""A film fills the screen: the island steps aside, comes up for a prompt, and is back when the film has gone. Below a
Wayland compositor nobody tells it of other programs' windows, and it stays where it is."""

import os
import subprocess
import time

from stage.waiting import wait_for

# Of the closed island, in points.
ISLAND = (40, 20)


def play(tour):
    tour.begin()
    agent, _ = tour.at_work()
    with tour.running():
        agent.session("busy")
        wait_for("the wings", lambda: _is_black(tour))
        for command in (_film(tour), ("xterm", "-fullscreen", "-bg", "#204060", "-e", "sleep", "600")):
            window = tour.stage.start(*command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            wait_for("its window", lambda name=command[0]: tour.stage.run("xdotool", "search", "--class", name))
            _expect_aside(tour, command[0])
            if command[0] == "mpv":
                _play_over_film(tour, agent)
            window.terminate()
            window.wait(10)
            wait_for(f"the island to be back after {command[0]}", lambda: _is_black(tour))


def _film(tour):
    # A picture in the shape of the screen is a film as well, and takes no decoder's time.
    still = os.path.join(tour.stage.home, "film.png")
    tour.stage.run("convert", "-size", "640x400", "gradient:#806020-#204060", still)
    return "mpv", "--no-config", "--vo=x11", "--ao=null", "--fs", "--image-display-duration=inf", "--osc=no", still


def _is_black(tour):
    width, height = (tour.stage.pixels(points) for points in ISLAND)
    area = f"{width}x{height}+{(tour.stage.size[0] - width) // 2}+0"
    return set(tour.screen.pixels(area)) == {(0, 0, 0)}


def _expect_aside(tour, what):
    if tour.stage.below_wayland:
        time.sleep(1)
        assert _is_black(tour), "it stays"
    else:
        wait_for(f"the island to step aside for {what}", lambda: not _is_black(tour))


def _play_over_film(tour, agent):
    tour.picture("film", "A film in fullscreen.")
    process = agent.ask()
    agent.wait_for_permission()
    wait_for("the request over the film", lambda: tour.screen.find("Allow"))
    tour.picture("prompt-over-film", "A prompt over the film.")
    tour.screen.press("Allow")
    assert "allow" in tour.ended("A prompt over the film", process)
    agent.session("busy")
    tour.screen.rest()
    _expect_aside(tour, "the film again")
