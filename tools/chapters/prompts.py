# SPDX-License-Identifier: MIT
"""Permission prompts of Claude Code: allowed, denied, too long to be allowed, taken to the terminal, and several."""

import json
import time

from stage.agents import Agent
from stage.waiting import wait_for
from stage.windows import active_window, read_notes

from .looks import shows_wings


def play(tour):
    tour.begin()
    with tour.running():
        agent = Agent(tour.stage)
        # A user who looks at the agent's own terminal is not asked in the island; this one reads something else.
        read_notes(tour.stage)
        agent.session("busy")
        wait_for("the agent's mark", lambda: tour.screen.find("Claude Code"))
        tour.picture("working", "A session works: its mark and its spinner beside the notch.", shows_wings(tour.screen))
        _play_answers(tour, agent)
        _play_too_long(tour, agent)
        _play_several(tour, agent)
        _play_notice(tour, agent)


def _decision(printed):
    return json.loads(printed)["hookSpecificOutput"]["decision"]["behavior"]


def _play_answers(tour, agent):
    screen = tour.screen
    process = agent.ask()
    agent.wait_for_permission()
    wait_for("the request", lambda: screen.is_enabled("Allow"))
    tour.picture("request", "A permission prompt drops down, with twenty seconds on its fuse.")
    screen.press("Allow")
    assert _decision(tour.ended("Allow", process)) == "allow"
    agent.session("busy")
    wait_for("the alert to close", lambda: not screen.find("Allow"))
    screen.rest()
    tour.picture("allowed", "Allowed: the agent goes on.", shows_wings(screen))

    process = agent.ask("rm -rf build")
    agent.wait_for_permission()
    screen.press("Deny")
    assert _decision(tour.ended("Deny", process)) == "deny"
    agent.session("busy")


def _play_too_long(tour, agent):
    screen = tour.screen
    process = agent.ask("find . -name '*.o' -newer build/stamp -print0 | xargs -0 rm -f && cmake --build --preset "
                        "release --target package && scp build/veslora.deb harbour:/srv/packages")
    agent.wait_for_permission()
    wait_for("the request", lambda: screen.is_enabled("Deny"))
    screen.rest()
    assert not screen.is_enabled("Allow"), "what was not shown in full can't be allowed"
    tour.picture("too-long", "Too long to show: it can be denied or taken to the terminal, not allowed.")
    screen.press("Jump")
    assert tour.ended("Jump", process) == "", "the prompt passes back to the terminal"
    wait_for("the terminal in front", lambda: active_window(tour.stage) == agent.name)
    agent.session("busy")
    tour.picture("jumped", "Jump: the prompt is back in its terminal, which is in front.")
    read_notes(tour.stage)
    agent.session("busy")


def _play_several(tour, agent):
    screen = tour.screen
    waiting = []
    for number in range(3):
        waiting.append(agent.ask("npm run build -- --mode production", f"other-{number}"))
        # One after the other, so that they are answered in that order.
        sign = f"+{number} waiting" if number else "Allow"
        wait_for("the next request", lambda sign=sign: screen.find(sign))
    wait_for("its keys", lambda: screen.is_enabled("Allow"))
    screen.rest()
    tour.picture("several", "Several wait: the oldest first, the others counted.")
    for left, process in zip((2, 1, 0), waiting):
        wait_for("the others to be counted", lambda left=left: left == 0 or screen.find(f"+{left} waiting"))
        screen.press("Deny")
        tour.ended("Deny one of several", process)


def _play_notice(tour, agent):
    screen = tour.screen
    agent.session("waiting", waitingFor="input needed")
    wait_for("the notice", lambda: screen.find("Dismiss"))
    screen.rest()
    tour.picture("notice", "A session that waits in its terminal, without a request that could be answered here.")
    screen.press("Dismiss")
    agent.session("busy")
    time.sleep(0.3)
    agent.session("idle")
    screen.rest()
    wait_for("the word", lambda: screen.find("DONE"))
    tour.picture("finished", "A session has just finished.", shows_wings(screen))
