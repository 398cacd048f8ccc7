#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Tests of the tools that no other test makes use of: translations, the comparison of pictures, wrong words, and
git's hooks."""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOLS = os.path.join(ROOT, "tools")
sys.path.insert(0, TOOLS)

from chapters.looks import URGENT, holds_tint  # pylint: disable=wrong-import-position


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, timeout=60, **options)


class FolderTest(unittest.TestCase):
    """Has a folder of its own."""

    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def put(self, name, text):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)

    def text_of(self, name):
        with open(self.path(name), encoding="utf-8") as file:
            return file.read()


class TranslationsTests(FolderTest):
    """A project of one text, in a folder of its own."""

    TEXT = 'auto text = QCoreApplication::translate("Menu", "%s");\n'

    def setUp(self):
        super().setUp()
        os.mkdir(self.path("tools"))
        shutil.copy(os.path.join(TOOLS, "translations"), self.path("tools"))
        for room in ("VesloraCore", "VesloraUI", "VesloraLinux"):
            os.mkdir(self.path(room))
        os.mkdir(self.path("translations"))
        self.put("Veslora/Menu.cpp", self.TEXT % "Quit")
        self.called()
        self.translate("de", "Beenden")

    def called(self, *options):
        done = run(self.path("tools", "translations"), *options)
        return done.stdout.splitlines(), done.returncode

    def translate(self, language, text):
        name = f"translations/veslora_{language}.ts"
        unfinished = '<translation type="unfinished"></translation>'
        self.put(name, self.text_of(name).replace(unfinished, f"<translation>{text}</translation>"))

    def test_passes_what_is_whole(self):
        self.assertEqual(self.called("--check"), ([], 0))

    def found(self):
        lines, status = self.called("--check")
        self.assertEqual(status, 1)
        return lines[:-1]

    def test_finds_a_text_that_is_missing_and_one_that_is_gone(self):
        self.put("Veslora/Menu.cpp", self.TEXT % "Leave everything as it is")
        self.assertEqual(self.found(), ["veslora_de.ts: missing: ('Menu', 'Leave everything as it is', '')",
                                        "veslora_de.ts: obsolete: ('Menu', 'Quit', '')"])

    def test_lists_what_is_left_to_translate(self):
        self.put("Veslora/Menu.cpp", self.TEXT % "Quit" + self.TEXT % "Settings")
        self.assertEqual(self.called(), (["veslora_de.ts: not translated: ('Menu', 'Settings', '')"], 0))
        self.assertEqual(self.found(), ["veslora_de.ts: not translated: ('Menu', 'Settings', '')"])

    def test_sees_what_the_core_marks_and_asks_for(self):
        self.put("VesloraCore/Text.cpp", 'auto a = translatable("Core", "marked");\n'
                                         'auto b = words.translate("Core", R"(asked\nfor)");\n')
        self.assertEqual(self.found(), ["veslora_de.ts: missing: ('Core', 'marked', '')",
                                        "veslora_de.ts: missing: ('Core', 'asked\\nfor', '')"])

    def test_wants_every_form_of_a_count(self):
        self.put("VesloraUI/View.qml", 'Text { text: qsTr("%n sessions", "", 2) }\n')
        lines, _ = self.called()
        self.assertEqual(lines, ["veslora_de.ts: not translated: ('View', '%n sessions', '')",
                                 "veslora_en.ts: not translated: ('View', '%n sessions', '')"])


class ComparePicturesTests(FolderTest):
    def setUp(self):
        super().setUp()
        for side in ("before", "after"):
            os.mkdir(self.path(side))
        self.put("masks", "# what moves\n*-clock 200x100+1000+300 the hands\n")

    def draw(self, side, name, *commands, size="144x90"):
        run("convert", "-size", size, "xc:gray", *commands, self.path(side, f"{name}.png"))

    def compared(self, *options):
        done = run(os.path.join(TOOLS, "compare-pictures"), "--masks", self.path("masks"), *options,
                   self.path("before"), self.path("after"))
        return done.stdout.splitlines(), done.returncode

    def test_finds_where_pictures_differ(self):
        self.draw("before", "1-box", "-fill", "red", "-draw", "rectangle 10,20 13,21")
        self.draw("after", "1-box", "-fill", "blue", "-draw", "rectangle 10,20 13,21")
        self.assertEqual(self.compared(), (["1-box.png: 8 pixels differ in 4x2+10+20", "1 of 1 differ"], 1))

    def test_looks_away_from_what_moves_at_any_scale_and_nowhere_else(self):
        for size, place in (("144x90", "105,35"), ("288x180", "210,70")):
            for side, colour in (("before", "red"), ("after", "blue")):
                for name in ("1-clock", "2-box"):
                    self.draw(side, name, "-fill", colour, "-draw", f"point {place}", size=size)
            left, top = place.split(",")
            self.assertEqual(self.compared(), (["1-clock.png: same", f"2-box.png: 1 pixels differ in 1x1+{left}+{top}",
                                                "1 of 2 differ"], 1))

    def test_misses_no_picture_unless_it_is_told_that_some_are_left_out(self):
        self.draw("before", "1-box")
        self.draw("after", "1-box")
        self.draw("before", "2-box")
        self.assertEqual(self.compared("--some"), (["1-box.png: same", "0 of 1 differ"], 0))
        lines, status = self.compared()
        self.assertEqual(lines[1], f"2-box.png: only in {self.path('before')}")
        self.assertEqual(status, 1)


class TintTests(unittest.TestCase):
    def test_finds_a_tint_in_full_in_the_dark_of_a_flicker_and_at_an_edge(self):
        for share in (1, 0.6, 0.25):
            self.assertTrue(holds_tint([(0, 0, 0), tuple(round(part * share) for part in URGENT)], URGENT), share)

    def test_finds_it_in_no_other_colour(self):
        others = [(0, 0, 0), (40, 12, 7), (242, 242, 242), (80, 80, 80), (200, 255, 61), (255, 176, 32), (215, 119, 87)]
        self.assertFalse(holds_tint(others, URGENT))


class WrongWordsTests(unittest.TestCase):
    def test_a_chapter_that_is_not_there_is_answered_by_those_that_are(self):
        tour = run(os.path.join(TOOLS, "tour"), "--only", "cherry")
        self.assertEqual(tour.returncode, 2)
        for chapter in ("settings", "timer", "killed"):
            self.assertIn(chapter, tour.stderr)

    def test_a_check_takes_none_but_its_own_words(self):
        for words in ([], ["cherry"], ["tidy", "cherry"], ["--minutes"], ["--minutes", "0", "fuzz"], ["--minutes", "x", "fuzz"]):
            check = run(os.path.join(TOOLS, "check"), *words)
            self.assertEqual((check.returncode, check.stdout), (2, ""), words)
            self.assertIn("usage", check.stderr)


class HooksTests(FolderTest):
    UNTIDY = "int  a( ) ;\n"
    TIDY = "int a();\n"

    def setUp(self):
        super().setUp()
        # Nothing of the machine's own user's settings.
        self.env = {"PATH": os.environ["PATH"], "HOME": self.folder, "GIT_CONFIG_NOSYSTEM": "1", "LANG": "C.UTF-8",
                    **{f"GIT_{who}_{what}": "somebody" for who in ("AUTHOR", "COMMITTER") for what in ("NAME", "EMAIL")}}
        shutil.copytree(os.path.join(TOOLS, "hooks"), self.path("tools", "hooks"))
        for name in ("tools/install-hooks", ".clang-format"):
            shutil.copy(os.path.join(ROOT, name), self.path(name))
        self.git("init", "-q")
        self.put("a.h", self.TIDY)
        self.git("add", "-A")
        self.git("commit", "-q", "-m", "First")

    def git(self, *words):
        return run("git", *words, cwd=self.folder, env=self.env)

    def install(self, *words):
        return run(self.path("tools", "install-hooks"), *words, env=self.env)

    def committed(self, name):
        return self.git("show", f"HEAD:{name}").stdout

    def test_switched_on_and_off_for_this_clone_alone(self):
        self.assertEqual(self.install().returncode, 0)
        self.assertEqual(self.git("config", "--local", "core.hooksPath").stdout.strip(), "tools/hooks")
        self.assertFalse(os.path.exists(self.path(".gitconfig")))
        self.assertEqual(self.install().returncode, 0, "a second time does no harm")
        self.install("--remove")
        self.assertEqual(self.git("config", "core.hooksPath").stdout, "")
        self.assertEqual(self.install("--cherry").returncode, 2)

    def test_takes_nobodys_own_hooks_away(self):
        self.put(".git/hooks/post-commit", "#!/bin/sh\n")
        refused = self.install()
        self.assertEqual(refused.returncode, 1)
        self.assertIn("post-commit", refused.stderr)
        os.unlink(self.path(".git/hooks/post-commit"))
        self.git("config", "core.hooksPath", "elsewhere")
        self.assertEqual(self.install().returncode, 1)
        self.install("--remove")
        self.assertEqual(self.git("config", "core.hooksPath").stdout.strip(), "elsewhere")

    def test_formats_what_is_staged_and_nothing_else(self):
        self.install()
        for name in ("b.h", "c.h", "d.txt"):
            self.put(name, self.UNTIDY)
        self.git("add", "b.h", "d.txt")
        self.assertEqual(self.git("commit", "-q", "-m", "More").returncode, 0)
        self.assertEqual(self.committed("b.h"), self.TIDY)
        self.assertEqual(self.text_of("b.h"), self.TIDY)
        self.assertEqual(self.text_of("c.h"), self.UNTIDY)
        self.assertEqual(self.committed("d.txt"), self.UNTIDY)

    def test_refuses_a_source_that_is_partly_staged_and_not_in_its_form(self):
        self.install()
        self.put("a.h", self.UNTIDY)
        self.git("add", "a.h")
        self.put("a.h", self.UNTIDY + "int b;\n")
        refused = self.git("commit", "-q", "-m", "Part")
        self.assertNotEqual(refused.returncode, 0)
        self.assertIn("partly staged, and not in its form: a.h", refused.stderr)
        self.assertEqual(self.text_of("a.h"), self.UNTIDY + "int b;\n")
        self.assertEqual(self.committed("a.h"), self.TIDY)

    def test_leaves_a_part_that_is_in_its_form(self):
        self.install()
        self.put("a.h", self.TIDY + "int b;\n")
        self.git("add", "a.h")
        self.put("a.h", self.TIDY + "int b;\nint  c;\n")
        self.assertEqual(self.git("commit", "-q", "-m", "Part").returncode, 0)
        self.assertEqual(self.committed("a.h"), self.TIDY + "int b;\n")
        self.assertEqual(self.text_of("a.h"), self.TIDY + "int b;\nint  c;\n")

    def test_counts_the_subjects_characters(self):
        self.install()
        for subject, passes in (("x" * 72, True), ("x" * 73, False), ("ä" * 72, True), ("ä" * 73, False),
                                ("Short\n\n" + "A long line of the body. " * 5, True)):
            commit = self.git("commit", "-q", "--allow-empty", "-m", subject)
            self.assertEqual(commit.returncode == 0, passes, subject)


if __name__ == "__main__":
    unittest.main()
