// SPDX-License-Identifier: MIT
// A small round key on a module that is edited. It takes presses 5 points beyond what shows of it.
import QtQuick
import Veslora

KeyItem {
    id: key

    property string symbol
    property string label

    Accessible.role: Accessible.Button
    implicitHeight: 28
    implicitWidth: 10 + (symbol !== "" ? 18 : Math.max(18, letters.implicitWidth + 10))

    PixelRectangle {
        anchors.fill: parent
        anchors.margins: 5
        borderColor: Qt.alpha(VesloraStyle.accentColor, 0.8)
        color: key.isPressed ? Qt.lighter(VesloraStyle.keySurfacePressed, 1.6) : VesloraStyle.keySurfacePressed
        radius: 9
    }

    Symbol {
        anchors.centerIn: parent
        color: VesloraStyle.accentColor
        name: key.symbol
        size: 10
        visible: key.symbol !== ""
    }

    Text {
        id: letters

        anchors.centerIn: parent
        color: VesloraStyle.accentColor
        height: 12
        text: key.label
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        visible: key.symbol === ""

        font {
            family: VesloraStyle.monospacedFont
            pixelSize: 9
            weight: Font.Bold
        }
    }

    Tip {
        isWanted: key.isHovered && !key.isPressed
        text: key.helpText
    }
}
