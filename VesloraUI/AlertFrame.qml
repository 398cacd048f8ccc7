// SPDX-License-Identifier: MIT
// The room of an alert: 14 points in from the sides and 10 more for the flare, 6 below the notch, 12 above the foot.
import QtQuick
import Veslora

ContentFrame {
    id: frame

    default property alias inside: room.data

    Item {
        id: room

        height: frame.height - y - 12
        width: frame.width - 48
        x: 24
        y: frame.model.notchHeight + 6
    }
}
