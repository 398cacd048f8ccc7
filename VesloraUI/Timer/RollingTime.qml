// SPDX-License-Identifier: MIT
// A time left. Its digits are in boxes of equal width, so that one that changes moves no other, and roll downward.
import QtQuick
import Veslora

Item {
    id: time

    /// Seconds.
    required property real remaining
    required property int size
    property color color: VesloraStyle.textPrimary
    /// In the font of the wings, whose digits are of equal width anyway.
    property bool isMonospaced: false
    /// It was on screen already, so that what changes moves.
    readonly property alias isLive: firstFrame.hasPassed

    Accessible.name: presenter.text
    Accessible.role: Accessible.StaticText
    implicitHeight: size + 4
    implicitWidth: digits.width
    width: implicitWidth

    FirstFrame {
        id: firstFrame
    }

    RollingTimePresenter {
        id: presenter

        remaining: time.remaining
    }

    Row {
        id: digits

        // A box is wider than its digit; the first one is at the edge all the same.
        x: time.isMonospaced ? 0 : -0.04 * time.size

        Repeater {
            model: presenter.pieces

            RollingDigit {
                color: time.color
                height: time.height
                isLive: time.isLive
                isMonospaced: time.isMonospaced
                size: time.size
            }
        }
    }
}
