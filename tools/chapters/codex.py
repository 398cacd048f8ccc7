# SPDX-License-Identifier: MIT
"""A turn of Codex's: two prompts, one allowed in the island and one taken to its terminal."""

import json

from stage.agents import Codex
from stage.waiting import wait_for
from stage.windows import active_window, read_notes

from .looks import shows_wings


def play(tour):
    tour.begin()
    with tour.running():
        codex = Codex(tour.stage)
        read_notes(tour.stage)
        _play_prompts(tour, codex)
    tour.log.append("SIGTERM: exit 0, no heartbeat left")


def _play_prompts(tour, codex):
    screen = tour.screen
    codex.hook("UserPromptSubmit").wait(5)
    wait_for("Codex's mark", lambda: screen.find("Codex"))
    tour.picture("codex-working", "Codex works: its own mark and spinner beside the notch.", shows_wings(screen))
    process = codex.hook("PermissionRequest")
    wait_for("Codex's request", lambda: screen.find("Approve · Codex") and screen.is_enabled("Allow"))
    screen.rest()
    tour.picture("codex-request", "A prompt of Codex's, which says so.")
    screen.press("Allow")
    allowed = tour.ended("Allow Codex", process)
    assert json.loads(allowed)["hookSpecificOutput"]["decision"]["behavior"] == "allow"
    codex.hook("PostToolUse").wait(5)
    wait_for("the alert to close", lambda: not screen.find("Allow"))

    process = codex.hook("PermissionRequest", tool_input={"command": "rm -rf build"})
    # By then the alert has come to rest under the pointer's aim.
    wait_for("the request", lambda: screen.is_enabled("Allow"))
    screen.press("Jump")
    assert tour.ended("Jump to Codex", process) == "", "the prompt passes back to the terminal"
    wait_for("Codex's terminal in front", lambda: active_window(tour.stage) == codex.name)
