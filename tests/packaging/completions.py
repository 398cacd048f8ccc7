#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Asks bash, zsh and fish themselves what they complete, in a home of their own."""

import os
import select
import subprocess
import sys
import tempfile
import termios
import time
import unittest

from sources import ROOT, keys_of_settings, states, words_of_command_line

FOLDER = os.path.join(ROOT, "packaging", "completions")
WORDS = [word.split() for word in words_of_command_line()]
AGENTS = {"claude", "codex"}
FILES = {"folder", "other.json", "own settings.json"}
LONGEST = 30  # seconds for which a shell may say nothing


def following(first):
    return {words[1] for words in WORDS if words[0] == first and len(words) > 1}


class Terminal:
    """An interactive shell. A line is completed and then run by it, as a command that tells what it was given: so the shell
    itself says when it is done, and how it reads what completion wrote."""

    READY, GIVEN, DONE = "\x05", "\x02", "\x03"
    # The shells' own spelling, so that nothing of it is on the screen but what they print.
    COMMAND = r"""veslora() { printf '\002%s' "$@"; printf '\003'; }
"""

    def __init__(self, test, command, environment):
        self.master, slave = os.openpty()
        test.addCleanup(os.close, self.master)
        termios.tcsetwinsize(slave, (60, 200))
        self.process = subprocess.Popen(["setsid", "--ctty", *command], stdin=slave, stdout=slave,  # pylint: disable=consider-using-with
                                        stderr=slave, env=environment, cwd=test.work)
        os.close(slave)
        test.addCleanup(self.process.wait)
        test.addCleanup(self.process.kill)
        self.coming = ""

    def until(self, mark):
        end = time.monotonic() + LONGEST
        while mark not in self.coming:
            if not select.select([self.master], [], [], max(0, end - time.monotonic()))[0]:
                raise AssertionError(f"the shell falls silent after {self.coming!r}")
            self.coming += os.read(self.master, 65536).decode(errors="replace")
        before, _, self.coming = self.coming.partition(mark)
        return before

    def press(self, keys):
        """What was on the screen meanwhile, and what the line then gave to the command."""
        self.until(self.READY)
        os.write(self.master, f"{keys}\r".encode())
        screen, *given = self.until(self.DONE).split(self.GIVEN)
        return screen, given


class Shell(unittest.TestCase):
    """What every shell has to complete."""

    def offered(self, line):
        """The words that this shell offers for the last one of the line, which is what follows the command."""
        raise NotImplementedError

    def setUp(self):
        self.home = self.enterContext(tempfile.TemporaryDirectory())  # pylint: disable=consider-using-with
        self.work = os.path.join(self.home, "work")
        os.makedirs(os.path.join(self.work, "folder"))
        for name in FILES - {"folder"}:
            self.write(os.path.join("work", name), "{}")
        self.environment = {"PATH": os.environ["PATH"], "HOME": self.home, "ZDOTDIR": self.home, "TERM": "xterm",
                            "LC_ALL": "C.UTF-8", "INPUTRC": "/dev/null"}

    def write(self, name, text):
        path = os.path.join(self.home, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    def run_plainly(self, *command):
        """What a shell prints that must have nothing to object to."""
        done = subprocess.run(command, env=self.environment, cwd=self.work, capture_output=True, text=True, check=False,
                              stdin=subprocess.DEVNULL, timeout=LONGEST)
        self.assertEqual((done.returncode, done.stderr), (0, ""), command)
        return done.stdout

    def test_offers_every_first_word_and_none_besides(self):
        first = {words[0] for words in WORDS}
        self.assertLessEqual({"hooks", "get", "report", "--verbose"}, first)
        options = {word for word in first if word.startswith("--")}
        self.assertEqual(self.offered("") | self.offered("--"), first)
        self.assertEqual(self.offered("--"), options)
        self.assertEqual(self.offered("pa"), {"page", "pause"})

    def test_offers_every_second_word_and_none_besides(self):
        self.assertIn("next", following("page"))
        self.assertIn("status", following("hooks"))
        for first in ("page", "hooks"):
            self.assertEqual(self.offered(f"{first} "), following(first))
        self.assertEqual(self.offered("page n"), {"next"})

    def test_offers_the_agents_behind_each_word_for_hooks(self):
        for second in following("hooks"):
            self.assertEqual(self.offered(f"hooks {second} "), AGENTS)
        self.assertEqual(self.offered("hooks install cl"), {"claude"})

    def test_offers_every_setting_that_can_be_set(self):
        keys = keys_of_settings() - states()
        self.assertIn("hoverDelay", keys)
        for first in ("get", "set"):
            self.assertEqual(self.offered(f"{first} "), keys)
        self.assertEqual(self.offered("set metronomeB"), {"metronomeBPM"})

    def test_offers_lengths_of_a_pause(self):
        self.assertEqual(self.offered("pause "), {"30m", "1h", "2h30m", "tomorrow"})

    def test_offers_the_option_of_an_export(self):
        self.assertEqual(self.offered("export --"), {"--all"})

    def test_offers_files_to_import(self):
        self.assertEqual(self.offered("import "), FILES)
        self.assertEqual(self.offered("import oth"), {"other.json"})

    def test_offers_nothing_behind_words_that_are_whole(self):
        for words in WORDS:
            if words[0] in ("pause", "get", "set", "export", "import", "hooks"):
                continue
            self.assertEqual(self.offered(" ".join(words) + " "), set(), words)
        for line in ("pause 30m ", "get accent ", "set accent ", "set accent lime ", "export --all ", "import other.json ",
                     "hooks install claude ", "nonsense ", "page nonsense "):
            self.assertEqual(self.offered(line), set(), line)

    def test_offers_no_option_where_none_is_known(self):
        for line in ("page --", "import other.json --", "import export --", "export --all --", "set export --"):
            self.assertEqual(self.offered(line) - {"--"}, set(), line)


class OnTerminal(Shell):
    """Those whose completion is a part of their line editor."""

    INSERT_ALL = ""

    def starts(self):
        """A terminal that has the completions loaded, and a key for all that is offered."""
        raise NotImplementedError

    def setUp(self):
        super().setUp()
        self.terminal = self.starts()

    def offered(self, line):
        screen, given = self.terminal.press(f"veslora {line}{self.INSERT_ALL}")
        self.assertNotRegex(screen, r"bash: |_veslora:|zsh: ", line)
        before = line.split(" ")[:-1]
        self.assertEqual(given[:len(before)], before)
        return {word.rstrip("/") for word in given[len(before):]} - {""}

    def completed(self, line):
        return self.terminal.press(f"veslora {line}\t")

    def test_writes_what_is_left_of_a_word(self):
        self.assertEqual(self.completed("hooks ins")[1], ["hooks", "install"])

    def test_writes_a_name_with_a_blank_as_one_file(self):
        for line in ("import ow", "import own\\ ", "import 'ow"):
            self.assertEqual(self.completed(line)[1], ["import", "own settings.json"], line)

    def test_goes_on_within_a_folder(self):
        self.write("work/folder/deep.json", "{}")
        self.assertEqual(self.completed("import fol\tde")[1], ["import", "folder/deep.json"])
        self.assertEqual(self.completed("import ~/wo\tfol\tde")[1], ["import", f"{self.work}/folder/deep.json"])

    def test_finds_without_ringing(self):
        for line in ("page n", "import ow", "hooks ins"):
            self.assertNotIn("\a", self.completed(line)[0], line)


class BashTests(OnTerminal):
    INSERT_ALL = "\x1b*"
    FILE = os.path.join(FOLDER, "veslora.bash")

    def starts(self):
        start = self.write("start", f"PS1=$'\\005'\n{Terminal.COMMAND}. '{self.FILE}'\n")
        return Terminal(self, ["bash", "--noprofile", "--rcfile", start, "-i"], self.environment)

    def test_loads_in_a_plain_shell(self):
        said = self.run_plainly("bash", "--norc", "--noprofile", "-eu", "-c", '. "$1"; complete -p veslora', "bash", self.FILE)
        self.assertEqual(said, "complete -F _veslora veslora\n")


class ZshTests(OnTerminal):
    INSERT_ALL, LIST = "\x18", "\x04"
    # The folder may be another user's: that is not asked about.
    LOAD = "fpath=('{}' $fpath); autoload -Uz compinit; compinit -u -D; "

    def starts(self, more=""):
        self.write(".zshrc", self.LOAD.format(FOLDER) + Terminal.COMMAND + more + r"""
            unsetopt promptsp
            LISTMAX=0
            zle-line-init() { printf '\005' }
            zle -N zle-line-init
            insert-all() { _main_complete; compstate[insert]=all; compstate[list]= }
            zle -C insert-all complete-word insert-all
            bindkey '^X' insert-all
            """)
        return Terminal(self, ["zsh", "-d", "-i"], self.environment)

    def listed(self, line):
        return self.terminal.press(f"veslora {line}{self.LIST}")[0]

    def test_loads_in_a_plain_shell(self):
        said = self.run_plainly("zsh", "-f", "-c", self.LOAD.format(FOLDER) + "autoload +X _veslora; print $_comps[veslora]")
        self.assertEqual(said, "_veslora\n")

    def test_describes_words(self):
        self.assertRegex(self.listed("page "), "next +-- the next page")
        screen = self.listed("")
        for words in WORDS:
            self.assertRegex(screen, rf"\b{words[0].lstrip('-')} +-- \w")

    def test_offers_the_same_without_descriptions(self):
        self.terminal = self.starts("zstyle ':completion:*' verbose no")
        screen = self.listed("page ")
        self.assertRegex(screen, r"next +previous")
        self.assertNotIn("the next page", screen)
        for line, words in (("", {words[0] for words in WORDS}), ("page ", following("page")), ("import ", FILES)):
            self.assertEqual(self.offered(line), words)


class FishTests(Shell):
    FILE = os.path.join(FOLDER, "veslora.fish")

    def lines(self, line):
        said = self.run_plainly("fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]", self.FILE,
                                f"veslora {line}")
        return [line.partition("\t") for line in said.splitlines()]

    def offered(self, line):
        words = [word.rstrip("/") for word, _, _ in self.lines(line)]
        self.assertEqual(len(words), len(set(words)), words)
        return set(words)

    def test_loads_in_a_plain_shell(self):
        self.assertEqual(self.run_plainly("fish", "--no-config", "-c", "source $argv[1]", self.FILE), "")

    def test_describes_words(self):
        lines = self.lines("") + self.lines("--") + self.lines("export --")
        self.assertIn(("toggle", "\t", "Open the island, or close it"), lines)
        self.assertEqual([word for word, _, description in lines if not description], [])


def load_tests(loader, _tests, _pattern):
    """The shells, without what they have in common."""
    return unittest.TestSuite(loader.loadTestsFromTestCase(shell) for shell in (BashTests, ZshTests, FishTests))


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=1))
