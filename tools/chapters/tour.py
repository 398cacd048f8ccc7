# SPDX-License-Identifier: MIT
"""What each chapter of the tour is given: the stage and all that is on it, the album of pictures and the log."""

import html
import os
import subprocess
import time

from stage.agents import Agent, Codex
from stage.program import running, running_as_left
from stage.windows import read_notes
from stage.waiting import wait_for

# What the chapter of the rack leaves in the notes; later ones begin with it.
TYPED = "typed under the wide rack\ntyped under the small rack\n"


class Album:
    """The pictures of the tour. They are numbered as they are in the whole tour, whichever chapters are played."""

    def __init__(self, directory, screen):
        self.directory = directory
        self.screen = screen
        self.number = 0
        self.pictures = []

    def take(self, name, caption, is_right=None):
        """Takes a picture after half a second, in which what moves settles, and again until it is the right one."""
        self.number += 1
        path = os.path.join(self.directory, f"{self.number:02}-{name}.png")
        time.sleep(0.5)

        def taken():
            self.screen.stage.run("import", "-window", "root", path)
            return not is_right or is_right(path)

        wait_for(f"the right moment for {name}", taken)
        self.pictures.append((os.path.basename(path), caption))
        print(f"  {os.path.basename(path)}: {caption}", flush=True)

    def write_index(self, log, heard):
        rows = "\n".join(f'<figure><img src="{html.escape(file)}" width="720"><figcaption>{html.escape(caption)}'
                         "</figcaption></figure>" for file, caption in self.pictures)
        lines, held = (html.escape("\n".join(each)) for each in (log, heard))
        with open(os.path.join(self.directory, "index.html"), "w", encoding="utf-8") as page:
            page.write(f'<!doctype html><meta charset="utf-8"><title>Veslora, a tour</title><h1>Veslora, a tour</h1>'
                       f"{rows}<h2>What the scripts printed</h2><pre>{lines}</pre>"
                       f"<h2>What the services heard</h2><pre>{held}</pre>\n")


class Tour:
    def __init__(self, stage, screen, services, program, album):
        self.stage = stage
        self.screen = screen
        self.services = services
        self.program = program
        self.album = album
        self.log = []

    def picture(self, name, caption, is_right=None):
        self.album.take(name, caption, is_right)

    def note(self, line):
        self.log.append(line)
        print("  " + line, flush=True)

    def ended(self, word, process):
        """Waits for a hook's end; tells what it printed."""
        process.wait(25)
        printed = process.stdout.read()
        self.note(f"{word}: {printed or '(nothing)'} [exit {process.returncode}]")
        return printed

    def running(self, **settings):
        """Runs the program with some settings, and ends it."""
        return running(self.stage, self.program, **settings)

    def running_as_left(self):
        """Runs it with the settings as they are, and ends it."""
        return running_as_left(self.stage, self.program)

    def open_settings(self):
        """As a second start does."""
        second = subprocess.run([self.program], env=self.stage.env, timeout=20, check=False)
        assert second.returncode == 0, "a second start ends well"
        wait_for("the settings window", lambda: self.screen.find("General"))

    def close_settings(self):
        """Presses the window manager's key, again where it did not hear it: it ignores keys while a button is held."""
        def is_gone():
            if not self.screen.find("General"):
                return True
            self.stage.run("xdotool", "key", "alt+F4")
            time.sleep(0.5)
            return False

        wait_for("the settings window to go", is_gone)

    def show_agents_tab(self):
        self.screen.press("Agents")
        wait_for("the agents' tab", lambda: self.screen.find("Install"))

    def install_hooks(self):
        """Presses “Install” for both agents."""
        self.screen.press("Install")
        wait_for("the hooks", lambda: self.screen.find("Installed"))
        # What says “Install” now is the other agent's.
        self.screen.press("Install")
        wait_for("Codex's hooks", lambda: os.path.exists(os.path.join(self.stage.home, ".codex", "hooks.json")) and
                 not self.screen.find("Install"))

    def begin(self, has_hooks=True):
        """Brings the stage to where a chapter begins: nothing runs, the pointer rests, and the home is a new user's, or
        that of one who has put in the hooks of both agents."""
        self.stage.clear(kept=has_hooks and self.stage.has_kept)
        self.screen.rest()
        if has_hooks and not self.stage.has_kept:
            with self.running():
                self.open_settings()
                self.show_agents_tab()
                self.install_hooks()
                self.close_settings()
            self.stage.keep()
            self.screen.rest()

    def at_work(self, typed=""):
        """Opens the windows of somebody at work: a terminal of each agent, and in front of them notes."""
        agent = Agent(self.stage)
        codex = Codex(self.stage)
        read_notes(self.stage, typed)
        return agent, codex
