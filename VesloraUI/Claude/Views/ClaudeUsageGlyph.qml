// SPDX-License-Identifier: MIT
// The letters that stand for an agent in the usage widget.
import QtQuick
import Veslora

Text {
    required property var glyph

    Accessible.ignored: text === ""
    Accessible.name: glyph.name
    Accessible.role: Accessible.StaticText
    color: glyph.color
    text: glyph.text
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter

    font {
        family: glyph.isSymbol ? VesloraStyle.symbolFont : VesloraStyle.monospacedFont
        pixelSize: 10
    }
}
