// SPDX-License-Identifier: MIT
// A tooltip of the settings window.
import QtQuick
import QtQuick.Templates as T
import Veslora

T.ToolTip {
    id: tip

    delay: 700
    implicitHeight: contentItem.implicitHeight + 8
    implicitWidth: contentItem.implicitWidth + 16
    margins: 4
    x: parent ? (parent.width - width) / 2 : 0
    y: parent ? parent.height + 4 : 0

    background: Rectangle {
        border.color: SettingsColors.line
        color: SettingsColors.list
        radius: 6
    }
    contentItem: SettingsText {
        color: SettingsColors.text
        horizontalAlignment: Text.AlignHCenter
        text: tip.text
        verticalAlignment: Text.AlignVCenter

        font {
            pixelSize: SettingsSizes.detail
        }
    }
}
