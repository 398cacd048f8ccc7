#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Holds the manual, the completions and the package's description to the sources: what there is must be told, and what
is told must be there. Reads files only."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
ROOMS = ("JsonValue", "MediaAdapter", "UpdateFetcher", "Veslora", "VesloraCore", "VesloraLinux", "VesloraUI", "Web")
COMPLETIONS = ("veslora.bash", "_veslora", "veslora.fish")


def text_of(*names):
    with open(os.path.join(ROOT, *names), encoding="utf-8") as file:
        return file.read()


def sources():
    for room in ROOMS:
        for folder, _, names in os.walk(os.path.join(ROOT, room)):
            for name in names:
                if name.endswith((".cpp", ".h")):
                    yield text_of(folder, name)


def manual():
    """Its text as it is typed, but with plain hyphens and without changes of the font."""
    return re.sub(r"\\f[BIPR]", "", text_of("packaging", "veslora.1").replace(r"\-", "-"))


def section(name):
    return re.search(rf"^\.SH {name}$(.*?)(?=^\.SH |\Z)", manual(), re.M | re.S).group(1)


def entries(text):
    """The heading of each entry of a list, with the text below it; those of a list within one are its text."""
    text = re.sub(r"^\.RS$.*?^\.RE$", "", text, flags=re.M | re.S)
    pieces = re.split(r"^\.TP\n\.BR? (.*)\n", text, flags=re.M)[1:]
    return dict(zip((heading.replace('"', "") for heading in pieces[::2]), pieces[1::2]))


def words_of_command_line():
    """As in "page next"."""
    source = text_of("VesloraCore", "Island", "CommandLine.cpp")
    return set(re.findall(r'Word\{"([a-z ]+)"', source) + re.findall(r'word == "([a-z-]+)"', source))


def keys_of_settings():
    return set(re.findall(r'string_view (\w+) = "\1"', text_of("VesloraUI", "Store", "SettingsKeys.h")))


def states():
    """The keys that are no setting of the command line's."""
    return set(re.findall(r"\{(\w+), .*, true\},$", text_of("VesloraUI", "Store", "SettingsKeys.cpp"), re.M))


def defaults_of_settings():
    """Only those that are spelled where they are registered."""
    source = text_of("VesloraUI", "Store", "SettingsKeys.cpp")
    return dict(re.findall(r'\{([a-z]\w+), (true|false|[\d.]+|"\w*")[,}]', source))


def variables():
    """Of the environment, as the program and the agents' scripts name them."""
    by_function = re.compile(r'(?:[gs]etenv|qputenv|qEnvironmentVariable\w*|[eE]nvironment|environmentOf|variable|listOf|'
                             r'setUnlessSet)\([^()"]*"([A-Z][A-Z_]+)"')
    in_tables = re.compile(r'"((?:XDG|PIPEWIRE|DBUS|LC|QT)_[A-Z_]+|LANG)"')
    in_scripts = re.compile(r"\b(VESLORA_[A-Z_]+):-")
    return {name for text in sources() for pattern in (by_function, in_tables, in_scripts) for name in pattern.findall(text)}


def scripts():
    return set(re.findall(r'"([a-z-]+\.sh)"', text_of("VesloraCore", "Agents", "Hooks", "SupportNames.h")))


def packages_to_run():
    return set(re.search(r"^run='(.*?)'", text_of("tools", "setup"), re.M | re.S).group(1).split())


def packages_to_build():
    return set(re.search(r"^build='(.*?)'", text_of("tools", "setup"), re.M | re.S).group(1).split())


def field(name):
    """The packages that a field of the package's description names."""
    value = re.search(rf"^{name}:(.*(?:\n .*)*)", text_of("packaging", "debian", "control"), re.M).group(1)
    return {word.split()[0] for word in value.split(",") if not word.strip().startswith("${")}


class ManualTests(unittest.TestCase):
    def test_tells_every_word_and_none_besides(self):
        words = words_of_command_line()
        self.assertIn("page next", words)
        told = {*entries(section("COMMANDS")), *entries(section("OPTIONS"))}
        self.assertEqual({re.sub(r" \[?(--all|[A-Z ]+)\]?$", "", heading).strip() for heading in told}, words)

    def test_tells_every_setting_and_none_besides(self):
        keys = keys_of_settings()
        self.assertIn("hoverDelay", keys)
        self.assertEqual(set(entries(section("SETTINGS"))), keys)

    def test_tells_every_default_as_it_is(self):
        told = entries(section("SETTINGS"))
        defaults = defaults_of_settings()
        self.assertIn("true", defaults.values())
        for key, value in defaults.items():
            plain = re.sub(r'^"(.*)"$', r"\\(lq\1\\(rq", re.sub(r"\.0$", "", value))
            self.assertIn(f"default {plain}.", told[key], key)

    def test_tells_every_variable(self):
        found = variables()
        self.assertLessEqual({"HOME", "CODEX_HOME", "PIPEWIRE_RUNTIME_DIR", "VESLORA_PERMISSION_WAIT"}, found)
        told = set(re.findall(r"[A-Z][A-Z_]+", " ".join(re.findall(r"^\.BR? (.*)", section("ENVIRONMENT"), re.M))))
        self.assertEqual(found - told, set())

    def test_tells_every_script(self):
        names = scripts()
        self.assertIn("claude-permission.sh", names)
        told = section("FILES")
        self.assertEqual({name for name in names if not re.search(rf"^\.IR? {re.escape(name)}\b", told, re.M)}, set())

    def test_tells_every_status_of_an_end(self):
        self.assertEqual(set(entries(section("EXIT STATUS"))), {"0", "1", "2", "3"})


class CompletionTests(unittest.TestCase):
    def test_each_knows_every_word_and_what_may_follow(self):
        words = {part for word in words_of_command_line() for part in word.split()}
        words |= {"tomorrow", "--all", "claude", "codex"}
        for name in COMPLETIONS:
            text = re.sub(r"-l (\w+)", r"--\1", text_of("packaging", "completions", name))
            text = re.sub(r"^ *#.*|(?<=:)[^'\"]*|-d '.*'", "", text, flags=re.M)
            missing = {word for word in words if not re.search(rf"(?<![\w-]){word}(?![\w-])", text)}
            self.assertEqual(missing, set(), name)

    def test_each_knows_every_setting_that_can_be_set(self):
        keys = keys_of_settings() - states()
        self.assertIn("hoverDelay", keys)
        for name in COMPLETIONS:
            found = set(re.findall(r"[a-z]+[A-Z]\w+|accent", text_of("packaging", "completions", name)))
            self.assertEqual(keys - found, set(), name)
            self.assertEqual(found & states(), set(), name)


class DesktopEntryTests(unittest.TestCase):
    def test_starts_the_program_with_words_that_there_are(self):
        lines = re.findall(r"^Exec=veslora ?(.*)$", text_of("packaging", "org.veslora.Veslora.desktop"), re.M)
        self.assertEqual(len(lines), 2)
        for words in lines:
            self.assertIn(words, {"", *words_of_command_line()})


class UnitTests(unittest.TestCase):
    UNIT = text_of("packaging", "veslora.service")

    def test_is_started_again_when_it_falls_silent(self):
        for line in ("Type=notify", "Restart=on-failure"):
            self.assertIn(line, self.UNIT.splitlines())
        self.assertGreaterEqual(int(re.search(r"^WatchdogSec=(\d+)$", self.UNIT, re.M).group(1)), 10)

    def test_brings_no_namespace(self):
        self.assertEqual(re.findall(r"^(?:Private|Protect)\w*=|^\w+Paths=", self.UNIT, re.M), [])

    @unittest.skipUnless(shutil.which("systemd-analyze"), "systemd's tools are not here")
    def test_is_understood_by_its_manager(self):
        with tempfile.TemporaryDirectory() as folder:
            # The program need not be installed for that.
            unit = os.path.join(folder, "veslora.service")
            with open(unit, "w", encoding="utf-8") as file:
                file.write(self.UNIT.replace("/usr/bin/veslora", "/bin/true"))
            verified = subprocess.run(["systemd-analyze", "verify", "--user", "--man=no", unit], text=True,
                                      capture_output=True, check=False,
                                      env={**os.environ, "XDG_RUNTIME_DIR": folder, "HOME": folder})
            self.assertEqual((verified.returncode, verified.stderr), (0, ""))


class ControlTests(unittest.TestCase):
    # What the programs are linked with is found by what makes the package.
    LINKED = {"libqt6svg6"}
    # What tests alone are built with, and what every build of a package has or does without.
    NOT_OF_A_PACKAGE = {"libxcb-ewmh-dev", "libxcb-icccm4-dev", "libxcb-xtest0-dev", "libxcb-damage0-dev",
                        "libqt6opengl6-dev", "g++", "ccache", "git", "ca-certificates"}
    # The second only where the package is to look for updates.
    OF_A_PACKAGE = {"debhelper-compat", "libsodium-dev"}

    def test_depends_on_what_the_program_needs_to_run(self):
        self.assertEqual(field("Depends"), packages_to_run() - self.LINKED)

    def test_is_built_with_what_a_build_needs(self):
        self.assertEqual(field("Build-Depends"), packages_to_build() - self.NOT_OF_A_PACKAGE | self.OF_A_PACKAGE)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=1))
