# SPDX-License-Identifier: MIT
"""What runs the whole program from outside stands on this: a display with its pieces, and on it a home with buses, eyes
and hands, agents, and a desktop's services. Whoever wants only the display loads nothing of the rest."""
