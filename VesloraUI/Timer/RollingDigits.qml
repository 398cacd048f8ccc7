// SPDX-License-Identifier: MIT
// A number or a time. Its digits are in boxes of equal width, so that one that changes moves no other, and roll
// downward.
import QtQuick
import Veslora

Item {
    id: digits

    required property RollingPresenter presenter
    required property int size
    property color color: VesloraStyle.textPrimary
    /// In the font of the wings, whose digits are of equal width anyway.
    property bool isMonospaced: false
    /// It was on screen already, so that what changes moves.
    readonly property alias isLive: firstFrame.hasPassed

    Accessible.name: digits.presenter.text
    Accessible.role: Accessible.StaticText
    implicitHeight: size + 4
    implicitWidth: row.width
    width: implicitWidth

    FirstFrame {
        id: firstFrame
    }

    Row {
        id: row

        // A box is wider than its digit; the first one is at the edge all the same.
        x: digits.isMonospaced ? 0 : -0.04 * digits.size

        Repeater {
            model: digits.presenter.pieces

            RollingDigit {
                color: digits.color
                height: digits.height
                isLive: digits.isLive
                isMonospaced: digits.isMonospaced
                size: digits.size
            }
        }
    }
}
