#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The helper for music as the program meets it. Its path comes as the first argument; names of tests, such as
"players.ChoiceTests", may follow. Ends with 77 where the program that the tests need is not installed."""

import shutil
import sys
import unittest

# As large as all else together that the tests need, and so not among what tools/setup installs.
OPTIONAL = {"real_browser": "chromium"}
SKIPPED = 77

if __name__ == "__main__":
    names = sys.argv[2:] or ["players", "program"]
    for name in names:
        program = OPTIONAL.get(name.partition(".")[0])
        if program and not shutil.which(program):
            print(f"SKIPPED: {name}, as {program} is not installed", file=sys.stderr)
            sys.exit(SKIPPED)
    unittest.main(module=None, argv=[sys.argv[0], *names])
