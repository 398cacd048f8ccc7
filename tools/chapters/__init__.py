# SPDX-License-Identifier: MIT
"""The tour's chapters. Each begins with a home and a desktop in a known state, so that it can be played alone."""
