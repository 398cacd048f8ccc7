# SPDX-License-Identifier: MIT
"""The usage widget in both sizes, of what both agents leave of a turn, and of a line that is appended meanwhile."""

import json
import os
import re
import subprocess
import time

from stage.agents import AGENTS, DATA
from stage.waiting import wait_for

from .tour import TYPED

_TRANSCRIPT = (".claude", "projects", "-home-me-w-allow", "a.jsonl")


def play(tour):
    tour.begin()
    agent, _ = tour.at_work(TYPED)
    agent.session("busy")
    _report_status(tour.stage, agent)
    _leave_transcripts(tour.stage)
    # 19,084 of each agent's; two million more in the second round.
    for size, layout, first, then in (("wide", "claudeUsage:2,clock,timer", "Today 38K", "Today 2.04M"),
                                      ("small", "claudeUsage,clock,timer", "Today 2.04M", "Today 4.04M")):
        with tour.running(widgetLayout=layout):
            _play_size(tour, size, first, then)


def _play_size(tour, size, first, then):
    tour.screen.open_island()
    wait_for("today's tokens of both agents", lambda: tour.screen.find(first))
    tour.picture(f"usage-{size}", f"The open rack with the {size} usage widget, of both agents.")
    line = {"type": "assistant", "timestamp": "", "requestId": size,
            "message": {"id": size, "usage": {"output_tokens": 2_000_000}}}
    with open(os.path.join(tour.stage.home, *_TRANSCRIPT), "a", encoding="utf-8") as file:
        file.write(_today(json.dumps(line, separators=(",", ":"))) + "\n")
    wait_for("the line that was appended", lambda: tour.screen.find(then))
    tour.log.append(f"Usage, {size}: {first}, and after one more line {then}")
    tour.screen.rest()


def _report_status(stage, agent):
    """Runs the status line's command with what Claude Code tells it after a turn."""
    with open(os.path.join(DATA, "statusline", "subscription.after-turn.json"), encoding="utf-8") as file:
        status = json.load(file)
    status["session_id"] = agent.payload["session_id"]
    for window, hours in (("five_hour", 3), ("seven_day", 90)):
        status["rate_limits"][window]["resets_at"] = int(time.time()) + hours * 3600
    with open(os.path.join(stage.home, ".claude", "settings.json"), encoding="utf-8") as file:
        line = json.load(file)["statusLine"]["command"]
    subprocess.run(["/bin/sh", "-c", line], input=json.dumps(status), text=True, check=True, timeout=5,
                   env=stage.env, stdout=subprocess.DEVNULL)


def _leave_transcripts(stage):
    for source, place in (
            ((DATA, "transcripts", "two-tools-in-one-reply.jsonl"), _TRANSCRIPT),
            ((AGENTS, "codex", "rollouts", "with-limits.denied-by-hook.jsonl"),
             (".codex", "sessions", *time.strftime("%Y %m %d").split(), "rollout-a.jsonl"))):
        with open(os.path.join(*source), encoding="utf-8") as file:
            lines = _today(file.read())
        path = os.path.join(stage.home, *place)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(lines)


def _today(lines):
    """What an agent once wrote, as if it had written it now."""
    now = time.strftime("%Y-%m-%dT%H:%M:%S.000Z", time.gmtime())
    return re.sub(r'"timestamp":"[^"]*"', f'"timestamp":"{now}"', lines)
