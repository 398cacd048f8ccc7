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
    /// Points that are left free at the wings' ends, and beside the notch.
    property real outerPadding: 12
    property real innerPadding: 4

    /// What is drawn: a view on its way out keeps the width that it had.
    property real drawnWidth

    height: notchHeight
    width: notchWidth + 2 * drawnWidth

    Binding on drawnWidth {
        restoreMode: Binding.RestoreNone
        value: wings.wingWidth
        when: wings.enabled
    }

    Item {
        id: leftWing

        height: parent.height
        width: wings.drawnWidth - wings.outerPadding - wings.innerPadding
        x: wings.outerPadding
    }

    Item {
        id: rightWing

        height: parent.height
        width: wings.drawnWidth - wings.outerPadding - wings.innerPadding
        x: wings.drawnWidth + wings.notchWidth + wings.innerPadding
    }
}
