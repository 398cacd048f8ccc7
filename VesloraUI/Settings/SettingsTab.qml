// SPDX-License-Identifier: MIT
// One tab of the settings window: a symbol over its name.
import QtQuick
import QtQuick.Templates as T
import Veslora

T.TabButton {
    id: tab

    property string symbol
    readonly property color tint: checked ? VesloraStyle.accentColor : SettingsColors.secondary

    Accessible.name: text
    implicitHeight: 50
    implicitWidth: Math.max(50, label.implicitWidth + 16)

    background: Rectangle {
        border.color: tab.visualFocus ? VesloraStyle.accentColor : "transparent"
        border.width: 1.5
        color: tab.checked ? SettingsColors.group : "transparent"
        radius: 8
    }
    contentItem: Item {
        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            color: tab.tint
            name: tab.symbol
            size: 20
            y: 1
        }

        SystemText {
            id: label

            anchors.horizontalCenter: parent.horizontalCenter
            color: tab.tint
            text: tab.text
            y: 25

            font {
                pixelSize: 11
                weight: Font.Medium
            }
        }
    }
}
