// SPDX-License-Identifier: MIT
// Rows that belong together, on one rounded surface, with a note below them.
import QtQuick
import Veslora

Column {
    id: group

    default property alias rows: content.data
    property string footer

    spacing: 6

    Rectangle {
        border.color: SettingsColors.groupBorder
        color: SettingsColors.group
        height: content.height + 2 * content.y
        radius: 8
        width: parent.width

        Column {
            id: content

            spacing: 12
            width: parent.width - 2 * x
            x: 14
            y: 12
        }
    }

    SettingsText {
        color: SettingsColors.secondary
        text: group.footer
        visible: text !== ""
        width: parent.width - 28
        wrapMode: Text.Wrap
        x: 14

        font {
            pixelSize: SettingsSizes.detail
        }
    }
}
