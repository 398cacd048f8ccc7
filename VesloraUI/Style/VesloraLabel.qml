// SPDX-License-Identifier: MIT
// The one treatment of all small headings and captions of the island, in a box of fixed height.
import QtQuick
import Veslora

Text {
    id: label

    Accessible.ignored: text === ""
    Accessible.name: text
    Accessible.role: Accessible.StaticText
    height: 12
    color: VesloraStyle.textSecondary
    elide: Text.ElideRight
    maximumLineCount: 1
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter

    font {
        capitalization: Font.AllUppercase
        family: VesloraStyle.monospacedFont
        letterSpacing: 1.2
        pixelSize: 10
        weight: Font.DemiBold
    }
}
