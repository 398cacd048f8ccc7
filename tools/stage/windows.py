# SPDX-License-Identifier: MIT
"""Other programs' windows on the stage: terminals, and which window is in front."""

import os
import subprocess

from .waiting import wait_for

NOTES = "notes"


def active_window(stage):
    return stage.run("xdotool", "getactivewindow", "getwindowname").strip()


def has_window(stage, title):
    return bool(stage.run("xdotool", "search", "--name", f"^{title}$"))


def start_terminal(stage, title, place, *command):
    """Opens a terminal at a place, in which a command runs, and waits for its window."""
    stage.start("xterm", "-geometry", place, "-title", title, *(["-e", *command] if command else []), stderr=subprocess.DEVNULL)
    wait_for(f"the window of {title}", lambda: has_window(stage, title))


def start_in_terminal(stage, title, place, script):
    """Opens a terminal at a place and runs a shell's script in it; gives the process, which is what the script becomes."""
    identity = os.path.join(stage.home, f"{title}.pid")
    start_terminal(stage, title, place, "sh", "-c", f"echo $$ >{identity}; {script}")
    return process_in(identity)


def process_in(path):
    """The number that a process writes of itself into a file."""
    def number():
        if not os.path.exists(path):
            return None
        with open(path, encoding="utf-8") as file:
            return file.read().strip()

    return int(wait_for(f"the process in {path}", number))


def bring_forward(stage, title):
    stage.run("xdotool", "search", "--name", f"^{title}$", "windowactivate", "--sync")
    wait_for(f"{title} in front", lambda: active_window(stage) == title)


def read_notes(stage, text=""):
    """Brings forward a window of notes, which has nothing to do with any agent, and which shows a text when it is new."""
    if not has_window(stage, NOTES):
        written = os.path.join(stage.home, "written")
        with open(written, "w", encoding="utf-8") as file:
            file.write(text)
        start_terminal(stage, NOTES, "90x20+620+560", "sh", "-c", f"cat {written}; exec cat >{_typed_file(stage)}")
    bring_forward(stage, NOTES)


def typed_into_notes(stage):
    with open(_typed_file(stage), encoding="utf-8") as file:
        return file.read()


def _typed_file(stage):
    return os.path.join(stage.home, "typed")
