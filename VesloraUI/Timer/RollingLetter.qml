// SPDX-License-Identifier: MIT
// A letter of a time, as far as it is there.
import QtQuick
import Veslora

SystemText {
    required property RollingTime time
    required property real presence

    Accessible.ignored: true
    color: time.color
    height: time.height
    horizontalAlignment: Text.AlignHCenter
    opacity: (time.isMonospaced ? 1 : 0.99) * Math.min(1, Math.max(0, presence))
    verticalAlignment: Text.AlignVCenter

    font {
        family: time.isMonospaced ? VesloraStyle.monospacedFont : VesloraStyle.systemFont
        pixelSize: time.size
        weight: Font.DemiBold
    }
}
