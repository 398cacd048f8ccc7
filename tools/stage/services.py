# SPDX-License-Identifier: MIT
"""What the desktop offers on the buses, and what it heard."""

import contextlib
import os
import subprocess

from .stage import ROOT, end_process
from .waiting import wait_for


class Services:
    """Played by tools/tour-services, which writes down what it hears."""

    def __init__(self, stage):
        self.stage = stage
        self.record = os.path.join(stage.folder, "heard")
        self.seen = 0

    @contextlib.contextmanager
    def playing(self, *names):
        process = self.stage.start(os.path.join(ROOT, "tools", "tour-services"), self.record, *names,
                                   stdout=subprocess.PIPE, text=True)
        with process.stdout:
            assert process.stdout.readline(), "the services play"
            yield
            end_process(process)

    def heard(self):
        if not os.path.exists(self.record):
            return []
        with open(self.record, encoding="utf-8") as file:
            return file.read().splitlines()

    def expect(self, *lines):
        """Waits until as many lines were heard as are given, since the last time, and sees that they are the same."""
        wait_for("the services to hear " + "; ".join(lines), lambda: len(self.heard()) >= self.seen + len(lines))
        new = self.heard()[self.seen:]
        assert new == list(lines), f"the services heard {new} and not {lines}"
        self.seen += len(new)
