# SPDX-License-Identifier: MIT
"""What a screen reader says of a prompt: a real Orca, before a speech service that writes down what it is given."""

import glob
import os

from .checks import await_true, check
from .debian import HOME, USER
from .island import Prompt

_SPEECH = HOME + "/speech"
# Each is there when the next begins; the last lives as long as the trial.
_SESSION = f"""#!/bin/sh
openbox &
/usr/libexec/at-spi-bus-launcher --launch-immediately &
speech-dispatcher -d -l 5 -L {_SPEECH}
orca &
until grep -qs 'Screen reader on' {_SPEECH}/*; do sleep 0.2; done
exec veslora --verbose
"""


class _Speech:
    def __init__(self, debian):
        self._folder = debian.inside(_SPEECH)

    def says(self, what):
        for path in glob.glob(self._folder + "/*.log"):
            with open(path, encoding="utf-8", errors="replace") as file:
                if what in file.read():
                    return True
        return False


def try_aloud(trial):
    """In a Debian in which the package is installed. Ends with the program still running."""
    trial.debian.install("orca", "at-spi2-core", "dbus", "openbox", "x11-xkb-utils", "speech-dispatcher-espeak-ng")
    trial.debian.write(HOME + "/session.sh", _SESSION, 0o755)
    trial.debian.as_root("install", "-d", "-o", USER, "-g", USER, _SPEECH)
    trial.process = trial.account.start(os.path.join(trial.debian.place, "aloud.log"), "dbus-run-session", "--",
                                        HOME + "/session.sh")
    check(await_true(trial.account.answers, 0.2, 60), "the program starts beside Orca")
    speech = _Speech(trial.debian)
    prompt = Prompt(trial.account, trial.display.name)
    check(prompt.comes_to_show(), "a prompt shows")
    for part in ("Claude Code asks in", "touch mock-was-here.txt", "20 seconds to answer", "Jump, Deny or Allow"):
        check(await_true(lambda part=part: speech.says(part), 0.1), f"and is read: “{part}”")
    prompt.allow()
    prompt.close()
