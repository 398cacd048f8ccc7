# SPDX-License-Identifier: MIT
"""Waiting for what another program does."""

import time

# What says, in words, how things are while somebody waits in vain.
WITNESSES = []


def wait_for(what, condition, seconds=20):
    """Returns the first true value of `condition`; raises TimeoutError when there is none in time."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeoutError("; ".join([f"waited in vain for {what}"] + [witness() for witness in WITNESSES]))
        time.sleep(0.02)
