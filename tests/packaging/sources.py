# SPDX-License-Identifier: MIT
"""What the sources know that manual and completions have to tell, read from their text."""

import os
import re

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
ROOMS = ("JsonValue", "MediaAdapter", "UpdateFetcher", "Veslora", "VesloraCore", "VesloraLinux", "VesloraUI", "Web")


def text_of(*names):
    with open(os.path.join(ROOT, *names), encoding="utf-8") as file:
        return file.read()


def sources():
    for room in ROOMS:
        for folder, _, names in os.walk(os.path.join(ROOT, room)):
            for name in names:
                if name.endswith((".cpp", ".h")):
                    yield text_of(folder, name)


def words_of_command_line():
    """As in "page next"."""
    source = text_of("VesloraCore", "Island", "CommandLine.cpp")
    return set(re.findall(r'Word\{"([a-z ]+)"', source) + re.findall(r'word == "([a-z-]+)"', source))


def keys_of_settings():
    return set(re.findall(r'string_view (\w+) = "\1"', text_of("VesloraUI", "Store", "SettingsKeys.h")))


def states():
    """The keys that are no setting of the command line's."""
    return set(re.findall(r"\{(\w+), .*, true\},$", text_of("VesloraUI", "Store", "SettingsKeys.cpp"), re.M))
