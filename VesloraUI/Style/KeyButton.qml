// SPDX-License-Identifier: MIT
// A key of the island. It takes presses alone, never the focus: no keystroke can reach it.
import QtQuick
import Veslora

KeyItem {
    id: key

    /// Drawn in place of the text, which then only is the key's name.
    property string symbol
    property real symbolSize: 13
    property bool isPrimary: false
    property color tint: VesloraStyle.accentColor
    property real padding: 10
    /// A key that does nothing now. It is drawn darker as a whole, so that its text can be read as well as before.
    property bool isDimmed: false
    /// Points to the key at its right, in a row.
    property alias gap: face.gap

    function shade(color: color): color {
        return isDimmed ? VesloraStyle.dimmed(color) : color;
    }

    implicitHeight: 26
    implicitWidth: Math.max(34, (symbol !== "" ? symbolSize : label.implicitWidth - label.font.letterSpacing) + 2 * padding)
    // Lets the key be found; what it says of itself is its own.
    Accessible.role: Accessible.Button

    Item {
        width: parent.width
        height: parent.height
        y: key.isPressed ? 1 : 0

        Behavior on y {
            NumberAnimation {
                duration: 80
                easing.type: Easing.OutQuad
            }
        }

        PixelRectangle {
            id: face

            anchors.fill: parent
            borderColor: key.isSelected ? key.shade(Qt.alpha(key.tint, 0.5)) : key.isPrimary ? "transparent" : key.shade(Qt.rgba(1, 1, 1, 0.06))
            color: key.shade(key.isPrimary ? Qt.alpha(key.tint, key.isPressed ? 0.8 : 1) : key.isPressed ? VesloraStyle.keySurfacePressed : VesloraStyle.keySurface)
            gap: 6
            radius: 6
        }

        Symbol {
            anchors.centerIn: parent
            color: label.color
            name: key.symbol
            size: key.symbolSize
            visible: key.symbol !== ""
        }

        Text {
            id: label

            anchors.centerIn: parent
            // The last letter's tracking hangs out, so that the word itself is centred.
            anchors.horizontalCenterOffset: font.letterSpacing / 2
            color: key.shade(key.isPrimary ? "black" : key.isSelected ? key.tint : VesloraStyle.textPrimary)
            height: 14
            text: key.text
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter
            visible: key.symbol === ""

            font {
                family: VesloraStyle.monospacedFont
                letterSpacing: 0.6
                pixelSize: 11
                weight: Font.DemiBold
            }
        }
    }

    Tip {
        isWanted: key.isHovered && !key.isPressed
        text: key.helpText
    }
}
