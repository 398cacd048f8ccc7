#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Which addresses and keys a build takes for its updates; all others end the configuration with a word why."""

import base64
import os
import subprocess
import sys
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
FEED = "https://example.org/veslora/feed.xml"
KEY = base64.b64encode(bytes(range(32))).decode()


def error_of(feed, key):
    done = subprocess.run(["cmake", f"-DVESLORA_UPDATE_FEED={feed}", f"-DVESLORA_UPDATE_KEY={key}", "-P",
                           os.path.join(ROOT, "cmake", "VesloraUpdates.cmake")], capture_output=True, text=True, check=False)
    return done.stderr if done.returncode != 0 else None


class ConfigurationTests(unittest.TestCase):
    def test_both_or_neither(self):
        self.assertIsNone(error_of("", ""))
        self.assertIsNone(error_of(FEED, KEY))
        self.assertIn("belong together", error_of(FEED, ""))
        self.assertIn("belong together", error_of("", KEY))

    def test_the_feed_is_a_file_by_https(self):
        self.assertIsNone(error_of("https://localhost:8443/a~b/feed-1.xml", KEY))
        for feed in ("http://example.org/feed.xml", "https://", "https://example.org", "https://example.org/", "file:///feed.xml",
                     "https://example.org/feed.xml?a=b", 'https://example.org/"', "https://exa mple.org/feed", "feed.xml"):
            self.assertIn("VESLORA_UPDATE_FEED must", error_of(feed, KEY) or "", feed)

    def test_the_key_has_32_bytes(self):
        for key in ("key", KEY[:-1], KEY + "=", "=" + KEY[1:], KEY[:-2] + "==", KEY.replace("A", "-"),
                    base64.b64encode(bytes(31)).decode(), base64.b64encode(bytes(33)).decode()):
            self.assertIn("VESLORA_UPDATE_KEY must", error_of(FEED, key) or "", key)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=1))
