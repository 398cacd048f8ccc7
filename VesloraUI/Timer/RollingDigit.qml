// SPDX-License-Identifier: MIT
// One place of a time that is running down: a new digit rolls in from above and pushes the former one out.
import QtQuick
import Veslora

Item {
    id: digit

    required property var piece
    required property RollingTime time
    /// From 0, where the new digit is about to come, to 1.
    readonly property real progress: roll.value - piece.turns + 1

    clip: roll.isRunning
    height: time.height
    width: piece.isDigit && !time.isMonospaced ? time.digitWidth : letter.implicitWidth

    Spring {
        id: roll

        damping: 0.85
        response: 0.5
        target: digit.piece.turns
    }

    RollingLetter {
        id: letter

        presence: digit.progress
        text: digit.piece.text
        time: digit.time
        width: parent.width
        y: (digit.progress - 1) * height
    }

    RollingLetter {
        presence: 1 - digit.progress
        text: digit.piece.former
        time: digit.time
        visible: roll.isRunning
        width: parent.width
        y: digit.progress * height
    }
}
