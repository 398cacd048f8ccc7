// SPDX-License-Identifier: MIT
// One place of a time that is running down: a new digit rolls in from above and pushes the former one out.
import QtQuick
import Veslora

Item {
    id: digit

    required property var piece
    required property int size
    required property bool isMonospaced
    required property bool isLive
    property color color
    /// From 0, where the new digit is about to come, to 1.
    readonly property real progress: roll.value - piece.turns + 1

    clip: roll.isRunning
    width: piece.isDigit && !isMonospaced ? 0.66 * size : letter.implicitWidth

    Spring {
        id: roll

        damping: 0.85
        // OPTIMIZATION: a timer that runs rolls a digit every second. With all 60 frames that took half of what the
        // open rack may cost altogether.
        interval: 1 / 30
        isLive: digit.isLive
        response: 0.5
        target: digit.piece.turns
    }

    RollingLetter {
        id: letter

        color: digit.color
        height: parent.height
        isMonospaced: digit.isMonospaced
        presence: digit.progress
        size: digit.size
        text: digit.piece.text
        width: parent.width
        y: (digit.progress - 1) * height
    }

    RollingLetter {
        color: digit.color
        height: parent.height
        isMonospaced: digit.isMonospaced
        presence: 1 - digit.progress
        size: digit.size
        text: digit.piece.former
        visible: roll.isRunning
        width: parent.width
        y: digit.progress * height
    }
}
