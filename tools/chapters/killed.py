# SPDX-License-Identifier: MIT
"""The program is killed while it asks: the agent goes on at once. There is nothing to see of it."""

import time

from stage.waiting import wait_for


def play(tour):
    tour.begin()
    agent, _ = tour.at_work()
    with tour.running() as veslora:
        process = agent.ask()
        wait_for("the request", lambda: tour.screen.find("Allow"))
        veslora.kill()
        veslora.wait()
        killed = time.monotonic()
        assert tour.ended("Killed while it asked", process) == ""
        assert time.monotonic() - killed < 2, "the agent goes on at once"
