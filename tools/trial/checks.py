# SPDX-License-Identifier: MIT
"""What a trial says of each thing it looks at, and how it runs other programs."""

import subprocess
import sys
import time

# Seconds; generous, since it only costs time when something is broken.
PATIENCE = 20
failures = []


def check(holds, what):
    print(("ok      " if holds else "FAILED  ") + what, flush=True)
    if not holds:
        failures.append(what)


def stop(why):
    sys.exit(f"package-try: {why}")


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, **options)


def must(*command, **options):
    done = run(*command, **options)
    if done.returncode != 0:
        stop(f"{' '.join(command)}: {(done.stdout + done.stderr)[-2000:]}")
    return done.stdout


def await_true(condition, step=0.02, patience=PATIENCE):
    deadline = time.monotonic() + patience
    while not condition():
        if time.monotonic() > deadline:
            return False
        time.sleep(step)
    return True
