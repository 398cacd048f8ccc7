// SPDX-License-Identifier: MIT
// A row's title, with its detail below it, smaller and secondary.
import QtQuick
import Veslora

Column {
    id: label

    property string title
    property string detail

    spacing: 2

    Text {
        color: SettingsColors.text
        text: label.title
        textFormat: Text.PlainText
        width: parent.width
        wrapMode: Text.Wrap

        font {
            family: VesloraStyle.systemFont
            pixelSize: 13
            weight: Font.Medium
        }
    }

    Text {
        color: SettingsColors.secondary
        lineHeight: 15
        lineHeightMode: Text.FixedHeight
        text: label.detail
        textFormat: Text.PlainText
        visible: text !== ""
        width: parent.width
        wrapMode: Text.Wrap

        font {
            family: VesloraStyle.systemFont
            pixelSize: 11
        }
    }
}
