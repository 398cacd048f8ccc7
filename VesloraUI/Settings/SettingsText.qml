// SPDX-License-Identifier: MIT
// Text of the settings window that assistive programs read where it stands.
import QtQuick
import Veslora

SystemText {
    Accessible.name: text
    Accessible.role: Accessible.StaticText
    // By the window's direction, not by that of the letters.
    horizontalAlignment: Text.AlignLeft
}
