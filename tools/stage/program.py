# SPDX-License-Identifier: MIT
"""The program itself on a stage: its start, its signs of life, its end."""

import contextlib
import os
import signal

from .waiting import wait_for


def support_of(stage):
    return os.path.join(stage.home, ".local", "share", "Veslora")


def start_program(stage, program):
    """Starts it and waits until scripts find its signs of life, and not those of one before it that was killed."""
    veslora = stage.start(program)
    support = support_of(stage)

    def shows_itself():
        with contextlib.suppress(FileNotFoundError), open(os.path.join(support, "pid"), encoding="utf-8") as file:
            return file.readline().strip() == str(veslora.pid) and os.path.exists(os.path.join(support, "heartbeat"))
        return False

    wait_for("its signs of life", shows_itself)
    return veslora


def end_program(stage, veslora):
    """Ends the program as the system does, and looks whether it did all that it has to."""
    veslora.send_signal(signal.SIGTERM)
    assert veslora.wait(10) == 0, "SIGTERM ends the program well"
    assert not os.path.exists(os.path.join(support_of(stage), "heartbeat")), "no script waits for a program that is gone"


@contextlib.contextmanager
def running(stage, program, **settings):
    """Runs the program with some settings, and ends it."""
    stage.write_settings(settings)
    with running_as_left(stage, program) as veslora:
        yield veslora


@contextlib.contextmanager
def running_as_left(stage, program):
    """The same with the settings as they are."""
    veslora = start_program(stage, program)
    yield veslora
    if veslora.poll() is None:
        end_program(stage, veslora)
