# SPDX-License-Identifier: MIT
"""What a picture of the closed island shows: the notch and the wings beside it."""

URGENT = (255, 77, 46)
BLACK = (0, 0, 0)
_WING = 53 + 6  # the flare included


def wing_colours(screen, path, points=_WING):
    """Those of the left wing and of the right one, as far out as told, beside a notch in the middle."""
    stage = screen.stage
    wing, height = stage.pixels(points), stage.pixels(24)
    left, right = (stage.size[0] // 2 + stage.pixels(side) for side in (-100, 100))
    return [screen.pixels(f"{wing}x{height}+{side}+0", path) for side in (left - wing, right)]


def holds_tint(colours, tint):
    """Whether one of them is this tint on black, dimmed to a fifth at most, as at an edge or in a flicker."""
    def is_tint(colour):
        share = max(colour) / max(tint)
        return share > 0.2 and all(abs(value - part * share) < 6 for value, part in zip(colour, tint))

    return any(map(is_tint, colours))


def _notch_colours(screen, path):
    """Those of the notch, but for its sides and its foot, where it is drawn round."""
    width, height = screen.stage.pixels(180), screen.stage.pixels(20)
    return screen.pixels(f"{width}x{height}+{(screen.stage.size[0] - width) // 2}+0", path)


def is_bare(screen):
    """A test of a picture: the notch is black, and beside it is the desktop."""
    def test(path):
        desktop = screen.pixels(f"1x1+{screen.stage.pixels(400)}+{screen.stage.pixels(12)}", path)[0]
        beside = [colours[len(colours) // 2] for colours in wing_colours(screen, path)]
        return set(_notch_colours(screen, path)) == {BLACK} and BLACK not in beside and BLACK != desktop

    return test


def shows_wings(screen, points=_WING - 16):
    """A test of a picture: both wings are black, as far out as told, and something is drawn in each."""
    def test(path):
        return all(colours.count(BLACK) > len(colours) // 2 and any(max(colour) > 100 for colour in colours)
                   for colours in wing_colours(screen, path, points))

    return test
