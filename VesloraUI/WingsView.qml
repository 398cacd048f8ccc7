// SPDX-License-Identifier: MIT
// The two wings of a live activity, either side of the notch; each holds one item in the middle of its free part.
import QtQuick

Item {
    id: wings

    required property real notchWidth
    required property real notchHeight
    required property real wingWidth
    property alias leading: leftWing.data
    property alias trailing: rightWing.data
    readonly property real outerPadding: 12
    readonly property real innerPadding: 4

    height: notchHeight
    width: notchWidth + 2 * wingWidth

    Item {
        id: leftWing

        height: parent.height
        width: wings.wingWidth - wings.outerPadding - wings.innerPadding
        x: wings.outerPadding
    }

    Item {
        id: rightWing

        height: parent.height
        width: wings.wingWidth - wings.outerPadding - wings.innerPadding
        x: wings.wingWidth + wings.notchWidth + wings.innerPadding
    }
}
