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
    property bool isSelected: false
    property color tint: VesloraStyle.accentColor
    property real padding: 10

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

        Rectangle {
            anchors.fill: parent
            color: key.isPrimary ? key.tint : key.isPressed ? VesloraStyle.keySurfacePressed : VesloraStyle.keySurface
            opacity: key.isPrimary && key.isPressed ? 0.8 : 1
            radius: 6
        }

        Rectangle {
            anchors.fill: parent
            border.color: key.isSelected ? Qt.alpha(key.tint, 0.5) : Qt.rgba(1, 1, 1, 0.06)
            border.width: 1
            color: "transparent"
            radius: 6
            visible: key.isSelected || !key.isPrimary
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
            color: key.isPrimary ? "black" : key.isSelected ? key.tint : VesloraStyle.textPrimary
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
