// SPDX-License-Identifier: MIT
// One tab of the settings window: a symbol over its name.
import QtQuick
import QtQuick.Templates as T
import Veslora

T.TabButton {
    id: tab

    property string symbol
    readonly property color tint: checked ? SettingsColors.accentText : tab.hovered ? SettingsColors.text : SettingsColors.secondary

    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: checked
    // Qt wants what has the focus to stay focusable.
    activeFocusOnTab: checked || activeFocus
    implicitHeight: 50 * SettingsSizes.scale
    implicitWidth: Math.max(50 * SettingsSizes.scale, implicitContentWidth + 16)
    verticalPadding: (implicitHeight - implicitContentHeight) / 2
    Accessible.onPressAction: clicked()

    background: Rectangle {
        border.color: tab.visualFocus ? SettingsColors.accentFill : tab.checked ? SettingsColors.groupBorder : "transparent"
        border.width: tab.visualFocus ? 1.5 : 1
        color: tab.checked ? SettingsColors.group : "transparent"
        radius: 8
    }
    contentItem: Column {
        spacing: 4

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            color: tab.tint
            name: tab.symbol
            size: 20 * SettingsSizes.scale
        }

        SystemText {
            anchors.horizontalCenter: parent.horizontalCenter
            color: tab.tint
            height: 14 * SettingsSizes.scale
            text: tab.text
            verticalAlignment: Text.AlignVCenter

            font {
                pixelSize: SettingsSizes.detail
                weight: Font.Medium
            }
        }
    }
}
