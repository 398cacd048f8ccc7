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
    Accessible.selectable: true
    Accessible.selected: checked
    // Qt wants what has the focus to stay focusable.
    activeFocusOnTab: checked || activeFocus
    implicitHeight: 50
    implicitWidth: Math.max(50, implicitContentWidth + 16)
    verticalPadding: (implicitHeight - implicitContentHeight) / 2
    Accessible.onPressAction: clicked()

    background: Rectangle {
        border.color: tab.visualFocus ? VesloraStyle.accentColor : "transparent"
        border.width: 1.5
        color: tab.checked ? SettingsColors.group : "transparent"
        radius: 8
    }
    contentItem: Column {
        spacing: 4

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            color: tab.tint
            name: tab.symbol
            size: 20
        }

        SystemText {
            anchors.horizontalCenter: parent.horizontalCenter
            color: tab.tint
            height: 14
            text: tab.text
            verticalAlignment: Text.AlignVCenter

            font {
                pixelSize: 11
                weight: Font.Medium
            }
        }
    }
}
