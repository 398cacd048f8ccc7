// SPDX-License-Identifier: MIT
// A bar that burns down from the right.
import QtQuick
import Veslora

Item {
    id: fuse

    property real fraction: 1
    property color tint: VesloraStyle.accentColor

    implicitHeight: 2

    FirstFrame {
        id: firstFrame
    }

    Glide {
        id: glide

        isLive: firstFrame.hasPassed
        target: Math.max(0, fuse.width * fuse.fraction)
    }

    PixelRectangle {
        color: fuse.tint
        height: fuse.height
        radius: height / 2
        width: glide.value
    }
}
