// SPDX-License-Identifier: MIT
// One of the bars that move while something plays.
import QtQuick
import Veslora

PixelRectangle {
    id: bar

    /// From 0 to 1.
    required property real level

    color: VesloraStyle.accentColor
    height: 3 + 11 * motion.value
    radius: 1
    width: 2.5

    // Fifteen steps a second are enough for what is so small, and cost a quarter.
    Spring {
        id: motion

        interval: 1 / 15
        target: bar.level
    }
}
