// SPDX-License-Identifier: MIT
// A bar that burns down from the right.
import QtQuick
import Veslora

Item {
    id: fuse

    property real fraction: 1
    property color tint: VesloraStyle.accentColor

    implicitHeight: 2

    Rectangle {
        color: fuse.tint
        height: fuse.height
        radius: height / 2
        width: Math.max(0, fuse.width * fuse.fraction)

        Behavior on width {
            NumberAnimation {
                duration: 250
            }
        }
    }
}
