# SPDX-License-Identifier: MIT
"""What the program shows on its display, and a prompt that an agent played here asks of it."""

import collections
import json
import os
import re
import subprocess
import time

from stage.display import DEFAULT_SIZE
from .checks import PATIENCE, await_true, must, run
from .debian import HOME

SUPPORT = HOME + "/.local/share/Veslora"
SESSIONS = HOME + "/.claude/sessions"
# What a real one was seen to write.
AGENT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "data", "agents", "claude")
# The key that allows is of it, unless the settings name another.
ACCENT = b"\xc8\xff\x3d"


def windows(display):
    """The tree of them, as xwininfo tells it."""
    return run("xwininfo", "-root", "-tree", env={**os.environ, "DISPLAY": display}).stdout


def allow_key(display):
    """Where the middle of the key is that allows, by its colour; absent while no prompt shows."""
    picture = subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], env={**os.environ, "DISPLAY": display},
                             capture_output=True, check=True).stdout
    width = int(DEFAULT_SIZE.split("x", maxsplit=1)[0])
    found = [match.start() // 3 for match in re.finditer(ACCENT, picture, re.S) if match.start() % 3 == 0]
    counts = collections.Counter(place // width for place in found)
    # The fuse has that colour too, but is only a line, beside the key's middle.
    rows = sorted(row for row, count in counts.items() if count > 30)
    if len(rows) < 10:
        return None
    row = rows[len(rows) // 4]
    columns = [place % width for place in found if place // width == row]
    return columns[len(columns) // 2], row


def move_pointer(display, *words):
    must("xdotool", "mousemove", *map(str, words), env={**os.environ, "DISPLAY": display})


class Prompt:
    """Plays an agent: a process, the file that tells of its session, and the installed script that asks."""

    def __init__(self, account, display):
        with open(os.path.join(AGENT, "hooks", "PermissionRequest.Bash.json"), encoding="utf-8") as file:
            prompt = file.read()
        self._display = display
        self._session = account.begin("sleep", "600")
        with open(os.path.join(AGENT, "sessions", "busy.json"), encoding="utf-8") as file:
            record = json.load(file)
        record.pop("tmux", None)
        record.update(pid=self._session.pid, status="waiting", waitingFor="permission prompt",
                      sessionId=json.loads(prompt)["session_id"], statusUpdatedAt=int(time.time() * 1000))
        account.begin("sh", "-c", f"mkdir -p {SESSIONS}; cat >{SESSIONS}/{self._session.pid}.json",
                      text=json.dumps(record)).wait(PATIENCE)
        self._agent = account.begin(f"{SUPPORT}/claude-permission.sh", text=prompt)

    def comes_to_show(self):
        return await_true(lambda: allow_key(self._display), 0.2)

    def waits(self):
        """Whether it still shows and nobody has answered."""
        return self._agent.poll() is None and allow_key(self._display) is not None

    def allow(self):
        """Presses the key; what the agent is told then, or None where that is no permission."""
        key = allow_key(self._display)
        if key:
            move_pointer(self._display, *key, "click", 1)
        printed = self._agent.communicate(timeout=PATIENCE)[0].strip()
        return printed if self._agent.returncode == 0 and '"behavior":"allow"' in printed else None

    def close(self):
        """Ends the session; the pointer goes where it opens nothing."""
        self._session.kill()
        self._session.wait()
        move_pointer(self._display, 10, 500)
