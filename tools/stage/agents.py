# SPDX-License-Identifier: MIT
"""Agents that file what real ones file, beside real processes and through the hooks that Veslora has put in."""

import json
import os
import shutil
import subprocess
import time

from .stage import ROOT
from .windows import start_in_terminal

AGENTS = os.path.join(ROOT, "tests", "data", "agents")
DATA = os.path.join(AGENTS, "claude")
_PLACE = "100x24+170+330"


def run_hook(stage, configuration, event, payload, shell):
    """Runs the first hook that a configuration names for an event, as the agent does: through a shell."""
    with open(os.path.join(stage.home, configuration), encoding="utf-8") as file:
        command = json.load(file)["hooks"][event][0]["hooks"][0]["command"]
    process = stage.start(*shell, command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    process.stdin.write(json.dumps(payload))
    process.stdin.close()
    return process


class Agent:
    """Plays Claude Code: a session's file beside a real process, and the hooks that its settings name."""

    def __init__(self, stage, name="w-allow", pid=None):
        self.stage = stage
        self.sessions = os.path.join(stage.home, ".claude", "sessions")
        os.makedirs(self.sessions, exist_ok=True)
        with open(os.path.join(DATA, "hooks", "PermissionRequest.Bash.json"), encoding="utf-8") as file:
            self.payload = json.load(file)
        self.name = name
        self.pid = pid or start_in_terminal(stage, name, _PLACE, "echo 'The agent runs here.'; exec sleep 600")

    def session(self, status, **more):
        with open(os.path.join(DATA, "sessions", "busy.json"), encoding="utf-8") as file:
            record = json.load(file)
        record.pop("tmux", None)
        record.update(pid=self.pid, status=status, name=self.name, sessionId=self.payload["session_id"],
                      statusUpdatedAt=int(time.time() * 1000), **more)
        with open(os.path.join(self.sessions, f"{self.pid}.json"), "w", encoding="utf-8") as file:
            json.dump(record, file)

    def wait_for_permission(self):
        self.session("waiting", waitingFor="permission prompt")

    def hook(self, event, payload):
        return run_hook(self.stage, ".claude/settings.json", event, payload, ["/bin/sh", "-c"])

    def ask(self, command=None, session=None):
        payload = json.loads(json.dumps(self.payload))
        if command:
            payload["tool_input"] = {"command": command}
        if session:
            payload["session_id"] = session
        return self.hook("PermissionRequest", payload)


class Codex:
    """Plays Codex: a terminal with a program of that name, and hooks that run below a server which all terminals share."""

    def __init__(self, stage, name="codex-work"):
        self.stage = stage
        self.name = name
        self.folder = os.path.join(stage.home, name)
        terminal = os.path.join(stage.home, "bin", "codex")
        server = os.path.join(stage.home, ".codex", "app-server-daemon", "bin", "codex")
        for program, path in (("sleep", terminal), ("sh", server)):
            os.makedirs(os.path.dirname(path), exist_ok=True)
            shutil.copy(os.path.realpath(shutil.which(program)), path)
        os.mkdir(self.folder)
        # The server itself is the hooks' parent.
        self.shell = [server, "-c", 'eval "$1"; exit 0', "app-server"]
        self.pid = start_in_terminal(stage, name, _PLACE,
                                     f"echo 'Codex runs here.'; cd {self.folder}; exec {terminal} 600")

    def hook(self, event, **more):
        """Runs the hook of an event with what Codex was seen to send, but for the folder."""
        name = event if event == "UserPromptSubmit" else f"{event}.Bash"
        with open(os.path.join(AGENTS, "codex", "hooks", f"{name}.json"), encoding="utf-8") as file:
            payload = json.load(file)
        payload.update(cwd=self.folder, **more)
        return run_hook(self.stage, ".codex/hooks.json", event, payload, self.shell)
