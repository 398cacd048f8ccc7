// SPDX-License-Identifier: MIT
// A row's title, with its detail below it, smaller and secondary.
import QtQuick
import Veslora

Column {
    id: label

    property string title
    property string detail
    /// Whether assistive programs read it here. Beside a control that goes by this title they don't.
    property bool isRead: false

    spacing: 2

    SettingsText {
        Accessible.ignored: !label.isRead
        color: SettingsColors.text
        text: label.title
        width: parent.width
        wrapMode: Text.Wrap

        font {
            pixelSize: SettingsSizes.title
            weight: Font.Medium
        }
    }

    SettingsText {
        Accessible.ignored: !label.isRead
        color: SettingsColors.secondary
        lineHeight: SettingsSizes.detailLine
        lineHeightMode: Text.FixedHeight
        text: label.detail
        visible: text !== ""
        width: parent.width
        wrapMode: Text.Wrap

        font {
            pixelSize: SettingsSizes.detail
        }
    }
}
