// SPDX-License-Identifier: MIT
// A letter of a time, as far as it is there.
import QtQuick
import Veslora

SystemText {
    required property int size
    required property bool isMonospaced
    required property real presence

    Accessible.ignored: true
    horizontalAlignment: Text.AlignHCenter
    opacity: (isMonospaced ? 1 : 0.99) * Math.min(1, Math.max(0, presence))
    verticalAlignment: Text.AlignVCenter

    font {
        family: isMonospaced ? VesloraStyle.monospacedFont : VesloraStyle.systemFont
        pixelSize: size
        weight: Font.DemiBold
    }
}
