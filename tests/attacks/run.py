#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Tries to make the whole program answer for a user who never saw the question, or lose what is the user's.

Everything comes from outside: real hook scripts file the prompts, a real pointer clicks, and the program is stopped,
flooded, given wrong clocks, full disks and linked folders. Each attack fails if an answer came that nobody meant, and
also if the considered press after it is not accepted.
"""

import argparse
import contextlib
import json
import os
import signal
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(ROOT, "tools"))

# pylint: disable=wrong-import-position # they lie where the line above tells to look
from stage.agents import Agent
from stage.program import end_program, start_program, support_of
from stage.screen import Screen
from stage.stage import Stage
from stage.waiting import wait_for
from stage.windows import bring_forward, start_in_terminal, start_terminal

SHIFTED_CLOCK = r"""
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
/* The wall clock, moved by as many seconds as a file says. */
int clock_gettime(clockid_t clock, struct timespec* now) {
    static int (*real)(clockid_t, struct timespec*);
    if (!real) real = (int (*)(clockid_t, struct timespec*))dlsym(RTLD_NEXT, "clock_gettime");
    int result = real(clock, now);
    const char* path = getenv("SHIFTED_CLOCK");
    FILE* file = clock == CLOCK_REALTIME && path ? fopen(path, "r") : NULL;
    if (file) {
        long seconds = 0;
        if (fscanf(file, "%ld", &seconds) == 1) now->tv_sec += seconds;
        fclose(file);
    }
    return result;
}
"""


class Attack:
    """One program on a stage of its own, with hooks in and an agent beside it."""

    def __init__(self, stage, screen, program):
        self.stage = stage
        self.screen = screen
        self.program = program
        self.support = support_of(stage)
        self.veslora = start_program(stage, program)
        self.agent = None
        self.asked_at = 0
        self.allow = None

    def install(self):
        """Through the settings window, as a user does."""
        subprocess.run([self.program], env=self.stage.env, timeout=20, check=True)
        wait_for("the settings window", lambda: self.screen.find("Agents"))
        self.screen.press("Agents")
        wait_for("the agents' tab", lambda: self.screen.find("Install"))
        self.screen.press("Install")
        wait_for("the hooks", lambda: self.screen.find("Installed"))
        process = start_in_terminal(self.stage, "attacked", "60x12+40+560", "exec sleep 900")
        self.agent = Agent(self.stage, "attacked", process)
        start_terminal(self.stage, "elsewhere", "60x12+700+560")
        bring_forward(self.stage, "elsewhere")
        self.agent.session("busy")

    def ask(self, command="make all"):
        self.asked_at = time.monotonic()
        return self.agent.ask(command)

    def learn_place(self):
        """Where “Allow” stands: the same place for every prompt of one line."""
        prompt = self.ask()
        wait_for("the prompt", lambda: self.screen.is_enabled("Allow"))
        self.allow = self.screen.middle_of("Allow")
        self.considered("Deny", prompt)

    def considered(self, key, prompt):
        """A press that means it, which must be accepted."""
        wait_for(f"“{key}” to come alive", lambda: self.screen.is_enabled(key))
        self.screen.press(key)
        prompt.wait(10)
        printed = prompt.stdout.read()
        decision = json.loads(printed)["hookSpecificOutput"]["decision"]["behavior"]
        assert decision == key.lower(), f"{key} was pressed, and the script printed {printed!r}"
        wait_for("the alert to go", lambda: not self.screen.find("Allow"))

    def park(self):
        self.stage.run("xdotool", "mousemove", *map(str, self.allow))

    def click(self):
        self.stage.run("xdotool", "click", "1")

    def refuse(self, prompt, what):
        """Sees that the script has printed nothing so far, and that the prompt can still be answered."""
        time.sleep(0.6)
        assert prompt.poll() is None, f"{what}: the prompt ended by itself: {prompt.stdout.read()!r}"
        self.considered("Deny", prompt)

    def race(self, times, attack, what):
        """Has `attack` ask and click that often within half a second, so that nobody could have considered anything. A
        round in which this machine was too slow for that proves nothing and is made again."""
        done = 0
        for _ in range(4 * times):
            self.park()
            prompt = attack()
            self.click()
            is_early = time.monotonic() - self.asked_at < 0.5
            self.shift(0)
            if is_early:
                self.refuse(prompt, what)
                done += 1
            elif prompt.poll() is None:
                self.considered("Deny", prompt)
            if done == times:
                return
        raise AssertionError(f"{what}: this machine is too slow to try it")

    # Each attack.

    def stall_by_signal(self, times):
        for turn in range(times):
            delay = (0.005, 0.03, 0.06, 0.09, 0.12, 0.15, 0.2)[turn % 7]
            self.park()
            prompt = self.ask()
            filed = time.monotonic()
            time.sleep(delay)
            self.veslora.send_signal(signal.SIGSTOP)
            time.sleep(max(0.0, 0.25 - (time.monotonic() - filed)))
            self.click()
            time.sleep(0.7)
            self.veslora.send_signal(signal.SIGCONT)
            self.refuse(prompt, f"stopped {delay} s after the prompt")

    def stall_after_the_frame(self, times):
        """The click is old enough by its time, but came while nothing was drawn."""
        for _ in range(times):
            self.park()
            prompt = self.ask()
            wait_for("the alert", lambda: self.screen.find("Allow"))
            self.veslora.send_signal(signal.SIGSTOP)
            time.sleep(0.9)
            self.click()
            self.veslora.send_signal(signal.SIGCONT)
            self.refuse(prompt, "stopped with the alert on screen")

    def stall_by_large_files(self, times, files):
        spool = os.path.join(self.support, "claude-spool")
        payload = {"session_id": self.agent.payload["session_id"], "hook_event_name": "PostToolUse", "tool_name": "Read",
                   "tool_input": {}, "tool_response": {"content": "x\n" * 5_300_000}}
        text = json.dumps(payload)
        turn = iter(range(100))

        def attack():
            number = next(turn)
            paths = []
            for index in range(files):
                path = os.path.join(self.stage.home, f"large-{number}-{index}")
                with open(path, "w", encoding="utf-8") as file:
                    file.write(text)
                paths.append(path)
            prompt = self.ask()
            time.sleep(0.012)
            for index, path in enumerate(paths):
                os.rename(path, os.path.join(spool, f"tmp.large{number}{index}.json"))
            time.sleep(0.25)
            return prompt

        self.race(times, attack, f"{files} large files")

    def clock_set_forward(self, times):
        def attack():
            prompt = self.ask()
            # By then the alert is there, but nobody has read it.
            time.sleep(0.15)
            self.shift(3)
            time.sleep(0.15)
            return prompt

        self.race(times, attack, "the clock was set 3 s forward")

    def clock_set_back(self):
        """An hour back: the prompt's file comes from the future then. It must be answered, and leave no ghost."""
        beat = os.path.join(self.support, "heartbeat")
        before = os.stat(beat).st_mtime_ns
        self.shift(-3600)
        wait_for("a heartbeat of then", lambda: os.stat(beat).st_mtime_ns != before)
        prompt = self.ask()
        self.considered("Allow", prompt)
        prompt = self.ask("second")
        wait_for("the next prompt", lambda: self.screen.find("second"))
        self.considered("Deny", prompt)
        before = os.stat(beat).st_mtime_ns
        self.shift(0)
        wait_for("a heartbeat of now", lambda: os.stat(beat).st_mtime_ns != before)

    def shift(self, seconds):
        path = self.stage.env["SHIFTED_CLOCK"]
        with open(path + ".new", "w", encoding="utf-8") as file:
            file.write(str(seconds))
        os.rename(path + ".new", path)

    def text_without_ink(self):
        """Characters that can't be seen, or that hide others: none may be allowed unless it is spelled out."""
        hidden = {
            "object replacement": "ls -la '" + "\ufffc" * 110 + "'; rm -rf ~",
            "wide blanks": "echo done" + "\u2003" * 42 + "\ufffc" * 73 + "; rm -rf ~",
            "private use": "rm " + "\ue000" * 40 + "x",
            "unassigned": "rm " + "\u0378" * 40 + "x",
            "noncharacters": "rm " + "\ufdd0" * 40 + "x",
            "joiners": "rm a" + "\u034f" * 400 + "b",
            "variation selectors": "rm a" + "\ufe0f" * 300 + "b",
            "marks": "rm a" + "\u0301" * 3000 + "b",
            "enclosing marks": "rm a" + "\u20dd" * 30 + "b",
            "fillers": "rm " + "\u115f" * 60 + "b",
            "line separators": "ls" + "\u2028" * 50 + "rm -rf ~",
        }
        for name, command in hidden.items():
            prompt = self.ask(command)
            wait_for(f"the prompt of {name}", lambda: self.screen.is_enabled("Deny"))
            assert not self.screen.is_enabled("Allow"), f"{name} can be allowed"
            self.park()
            self.click()
            self.refuse(prompt, name)
        # Few enough of them are spelled, are whole on screen, and may be allowed.
        prompt = self.ask("rm a\u034fb\u200bc \u05d0 ; # \u05d1")
        wait_for("the prompt", lambda: self.screen.find("rm a⟨U+034F⟩b⟨U+200B⟩c \u05d0 ; # \u05d1"))
        self.considered("Allow", prompt)

    def linked_folder(self):
        """A spool that is a link to another folder: nothing there may be read or deleted."""
        other = os.path.join(self.stage.home, "documents")
        os.mkdir(other)
        for name in ("invoice.json", "perm-aaaaaa.json", "tmp.aaaaaa"):
            with open(os.path.join(other, name), "w", encoding="utf-8") as file:
                file.write('{"mine": true}')
            os.utime(os.path.join(other, name), (1, 1))
        spool = os.path.join(self.support, "claude-spool")
        os.rename(spool, spool + ".kept")
        os.symlink(other, spool)
        # Two ticks of the program, in which it looks at its folders.
        beat = os.path.join(self.support, "heartbeat")
        for _ in range(2):
            before = os.stat(beat).st_mtime_ns
            wait_for("a tick", lambda b=before: os.stat(beat).st_mtime_ns != b)
        assert sorted(os.listdir(other)) == ["invoice.json", "perm-aaaaaa.json", "tmp.aaaaaa"], os.listdir(other)
        os.unlink(spool)
        os.rename(spool + ".kept", spool)
        prompt = self.ask()
        self.considered("Allow", prompt)

    def full_disk(self):
        """An answer that can't be written: the alert says so and stays, and the next press answers."""
        answers = os.path.join(self.support, "answers")
        os.makedirs(answers, mode=0o700, exist_ok=True)
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k,mode=700", "veslora-test", answers],
                                 check=False, capture_output=True)
        if mounted.returncode != 0:
            print("  full disk: only an administrator can make one; left out", flush=True)
            return
        try:
            prompt = self.ask()
            wait_for("the prompt", lambda: self.screen.is_enabled("Allow"))
            filler = os.path.join(answers, "filler")
            descriptor = os.open(filler, os.O_WRONLY | os.O_CREAT, 0o600)
            with contextlib.suppress(OSError):
                while True:
                    os.write(descriptor, b"x" * 4096)
            os.close(descriptor)
            self.screen.press("Allow")
            wait_for("the failure to be told", lambda: self.screen.find("Couldn't answer"))
            assert prompt.poll() is None, "nothing was answered"
            assert self.screen.is_enabled("Allow"), "it can be tried again"
            os.unlink(filler)
            self.considered("Allow", prompt)
        finally:
            subprocess.run(["umount", "--lazy", answers], check=True)

    def hung_compositor(self):
        """What the program drew never came on screen: a press there means nothing."""
        prompt = self.ask("first")
        self.considered("Deny", prompt)
        self.park()
        os.kill(self.stage.compositor, signal.SIGSTOP)
        prompt = self.ask("second")
        try:
            wait_for("the alert", lambda: self.screen.is_enabled("Allow"))
            self.click()
            time.sleep(0.6)
            assert prompt.poll() is None, "answered on a screen that shows something else"
        finally:
            os.kill(self.stage.compositor, signal.SIGCONT)
        self.considered("Allow", prompt)

    def forged_press(self):
        """A press that another program sends to the window carries whatever time its sender likes."""
        prompt = self.ask()
        wait_for("the prompt", lambda: self.screen.is_enabled("Allow"))
        self.park()
        for window in self.stage.run("xdotool", "search", "--pid", str(self.veslora.pid)).split():
            self.stage.run("xdotool", "click", "--window", window, "1")
        self.refuse(prompt, "a press that was sent")


def attacks(attack, times):
    return {
        "stall by signal": lambda: attack.stall_by_signal(times),
        "stall after the frame": lambda: attack.stall_after_the_frame(times),
        "stall by a large file": lambda: attack.stall_by_large_files(times, 1),
        "stall by three large files": lambda: attack.stall_by_large_files(1, 3),
        "clock set forward": lambda: attack.clock_set_forward(times),
        "clock set back": attack.clock_set_back,
        "forged press": attack.forged_press,
        "hung compositor": attack.hung_compositor,
        "text without ink": attack.text_without_ink,
        "linked folder": attack.linked_folder,
        "full disk": attack.full_disk,
    }


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True, help="the program to attack")
    parser.add_argument("--times", type=int, default=3, help="how often each race is tried")
    parser.add_argument("--only", help="the one attack to try")
    parser.add_argument("--below-wayland", action="store_true", help="the window takes the form that it has on a Wayland desktop")
    arguments = parser.parse_args()
    with Stage(below_wayland=arguments.below_wayland) as stage:
        library = os.path.join(stage.folder, "clock.so")
        subprocess.run(["cc", "-shared", "-fPIC", "-o", library, "-x", "c", "-", "-ldl"], input=SHIFTED_CLOCK, text=True,
                       check=True)
        stage.env["SHIFTED_CLOCK"] = os.path.join(stage.folder, "shift")
        screen = Screen(stage)
        # For the program and the scripts alike; the files' own stamps stay those of the machine.
        stage.env["LD_PRELOAD"] = library
        attack = Attack(stage, screen, os.path.abspath(arguments.program))
        attack.install()
        attack.learn_place()
        for name, run in attacks(attack, arguments.times).items():
            if arguments.only in (None, name):
                started = time.monotonic()
                run()
                print(f"  {name}: held ({time.monotonic() - started:.1f} s)", flush=True)
        end_program(stage, attack.veslora)
    return 0


if __name__ == "__main__":
    sys.exit(main())
