# SPDX-License-Identifier: MIT
"""The open rack with the agents widget in both sizes, beneath which the keyboard goes on to the window in front."""

from stage.waiting import wait_for
from stage.windows import typed_into_notes


def play(tour):
    tour.begin()
    agent, codex = tour.at_work()
    for size, layout in (("wide", "claude:2,meters,keepAwake"), ("small", "claude,timer,music")):
        with tour.running(widgetLayout=layout):
            agent.session("busy")
            agent.hook("PreToolUse", {"session_id": agent.payload["session_id"], "hook_event_name": "PreToolUse",
                                      "tool_name": "Bash", "tool_input": {"command": "ctest --preset debug"}}).wait(5)
            codex.hook("PreToolUse").wait(5)
            _play_size(tour, size, (codex.name, agent.name))


def _play_size(tour, size, rows):
    tour.screen.open_island()
    for row in rows:
        wait_for(f"the row of {row}", lambda row=row: tour.screen.find(row, "push button"))
    tour.picture(f"rack-{size}", f"The open rack with the {size} agents widget.")
    tour.stage.run("xdotool", "type", f"typed under the {size} rack\n")
    wait_for("what was typed to reach the window beneath",
             lambda: f"under the {size} rack\n" in typed_into_notes(tour.stage))
    tour.screen.rest()
