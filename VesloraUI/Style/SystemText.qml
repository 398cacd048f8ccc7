// SPDX-License-Identifier: MIT
// Text in the system font, never read as markup.
import QtQuick
import Veslora

Text {
    // Under full opacity Qt blends the letters of this kind of font by a curve that makes light ones on black look a
    // weight bolder than they are.
    opacity: 0.99
    textFormat: Text.PlainText

    font {
        family: VesloraStyle.systemFont
    }
}
