// SPDX-License-Identifier: MIT
// The room of an alert: 14 points in from the sides and 10 more for the flare, 6 below the notch, 12 above the foot.
import QtQuick
import Veslora

ContentFrame {
    id: frame

    required property NotchOutline outline
    default property alias inside: room.data
    /// Of the keys that decide something.
    readonly property PressJudge judge: gate
    /// The text that a judged press answers; null in an alert that decides nothing.
    property Item text: null
    /// The alert's own, which stays as it was when the island goes on to the next one.
    property string identity

    Component.onCompleted: identity = model.contentIdentity

    Item {
        id: room

        height: frame.height - y - 12
        width: frame.width - 48
        x: 24
        y: frame.model.notchHeight + 6
    }

    AlertGate {
        id: gate

        isWatching: frame.enabled
        outline: frame.outline
        room: room
        text: frame.text
        onIsOnScreenChanged: frame.model.alertIsOnScreen(frame.identity)
    }
}
