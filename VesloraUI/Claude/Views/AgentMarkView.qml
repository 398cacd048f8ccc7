// SPDX-License-Identifier: MIT
// The little mark that stands for an agent.
import QtQuick
import Veslora

Item {
    id: mark

    required property var glyph

    Accessible.name: glyph.fullName
    Accessible.role: Accessible.Graphic
    height: glyph.isMascot ? mascot.height : 14
    width: glyph.isMascot ? mascot.width : label.implicitWidth

    ClaudeMascotView {
        id: mascot

        cell: 1.5
        visible: mark.glyph.isMascot
    }

    Text {
        id: label

        color: mark.glyph.color
        height: 14
        text: mark.glyph.text
        verticalAlignment: Text.AlignVCenter
        visible: !mark.glyph.isMascot

        font {
            bold: true
            family: mark.glyph.isSymbol ? VesloraStyle.symbolFont : VesloraStyle.monospacedFont
            pixelSize: 12
        }
    }
}
