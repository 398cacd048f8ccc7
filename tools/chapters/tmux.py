# SPDX-License-Identifier: MIT
"""A session in a pane of tmux that nobody looks at: the way there leads through tmux to its terminal."""

import os
import time

from stage.agents import Agent
from stage.waiting import wait_for
from stage.windows import active_window, process_in, read_notes, start_terminal


def play(tour):
    tour.begin()
    with tour.running():
        other = Agent(tour.stage)
        read_notes(tour.stage)
        other.session("busy")
        wait_for("the other session's mark", lambda: tour.screen.find("Claude Code"))
        other.session("idle")
        wait_for("the other session's end", lambda: tour.screen.find("DONE"))
        tmux = ["tmux", "-S", os.path.join(tour.stage.home, "tmux")]
        try:
            _play_jump(tour, tmux)
        finally:
            tour.stage.run(*tmux, "kill-server")


def _play_jump(tour, tmux):
    stage, screen = tour.stage, tour.screen
    identity = os.path.join(stage.home, "pane.pid")
    start_terminal(stage, "panes", "70x20+60+420", *tmux, "-f", "/dev/null", "new-session", "-s", "main",
                   f"echo $$ >{identity}; exec sleep 600")
    agent = Agent(stage, "in-tmux", process_in(identity))
    stage.run(*tmux, "new-window", "exec sleep 600")
    agent.payload["session_id"] = "in-tmux"
    read_notes(stage)
    agent.session("waiting", waitingFor="input needed", tmux="main:@0.%0")
    wait_for("the notice", lambda: screen.find("Jump"))
    screen.rest()
    time.sleep(0.5)
    screen.press("Jump")
    wait_for("the terminal of tmux in front", lambda: active_window(stage) == "panes")
    shown = stage.run(*tmux, "display-message", "-p", "#{pane_id}").strip()
    assert shown == "%0", "the pane of the session is the one that shows"
    tour.picture("tmux", "Jump into tmux: the window and the pane are selected, and its terminal is in front.")
