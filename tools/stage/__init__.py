# SPDX-License-Identifier: MIT
"""What runs the whole program from outside uses this: a display with its pieces, and on it a home with buses, eyes
and hands, agents, and a desktop's services. A user of the display alone loads nothing of the rest."""
