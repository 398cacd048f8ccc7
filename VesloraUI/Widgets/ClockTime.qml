// SPDX-License-Identifier: MIT
// A time of day in which every digit is in a box of equal width.
import QtQuick
import Veslora

Row {
    id: time

    required property string text
    required property QtObject pieces
    required property int size

    Accessible.name: text
    Accessible.role: Accessible.StaticText

    Repeater {
        model: time.pieces

        SystemText {
            required property var piece

            color: VesloraStyle.textPrimary
            height: time.height
            horizontalAlignment: Text.AlignHCenter
            text: piece.text
            verticalAlignment: Text.AlignVCenter
            width: piece.isDigit ? 0.66 * time.size : undefined

            font {
                pixelSize: time.size
                weight: Font.Medium
            }
        }
    }
}
