// SPDX-License-Identifier: MIT
// One of the bars that move while something plays.
import QtQuick
import Veslora

PixelRectangle {
    /// From 0 to 1.
    required property real level

    color: VesloraStyle.accentColor
    height: 3 + 11 * level
    radius: 1
    width: 2.5
}
