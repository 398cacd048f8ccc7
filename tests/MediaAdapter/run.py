#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The helper for music as the program meets it. Its path comes as the first argument; names of tests, such as
"players.ChoiceTests", may follow."""

import sys
import unittest

if __name__ == "__main__":
    names = sys.argv[2:] or ["players", "program"]
    unittest.main(module=None, argv=[sys.argv[0], *names])
