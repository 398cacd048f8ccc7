// SPDX-License-Identifier: MIT
// Where the parts of a permission request's alert lie on the stage.
#pragma once

#include "VesloraCore/Island/NotchGeometry.h"
#include "bench/Display.h"
#include "bench/Stage.h"

#include <algorithm>

namespace veslora::bench::RequestAlert {

inline constexpr int width = static_cast<int>(NotchGeometry::claudeRequestAlertSize.width);
inline constexpr int height =
    static_cast<int>(NotchGeometry::claudeRequestAlertSize.height + NotchGeometry::fakeNotchMinHeight);
inline constexpr int left = (Stage::width - width) / 2;

/// The first words of the request's text: 24 points in, below the notch, the heading and their distances, one
/// line.
inline constexpr Area text{left + 24, static_cast<int>(NotchGeometry::fakeNotchMinHeight) + 6 + 17, 120, 14};

/// In the blank of the key "Allow" under its word: the rightmost, 24 points in from the side and 12 from the
/// foot.
inline constexpr Place allowKey{left + width - 24 - 20, height - 12 - 3};

/// Below the closed island and in the middle of the alert.
inline constexpr Place middle{Stage::width / 2, height / 2};

/// Whether any of the text's pixels is lit to a tenth of full brightness, as far as a text fades in that can
/// be told from black at a glance. Neither the desktop nor the island has any red in it.
[[nodiscard]] inline bool showsText(const Display& display) {
    constexpr int noticeable = 26;
    return std::ranges::any_of(display.pixels(text), [](Pixel pixel) { return pixel.red() >= noticeable; });
}

/// Whether the key is lit as one that can be pressed; before, it is dimmed to two fifths of that.
[[nodiscard]] inline bool isArmed(const Display& display) {
    constexpr int bright = 160;
    return display.pixel(allowKey).green() >= bright;
}

} // namespace veslora::bench::RequestAlert
