// SPDX-License-Identifier: MIT
// One line of what a player tells, whatever script it is in; it begins at the left.
import QtQuick
import Veslora

SystemText {
    Accessible.ignored: text === ""
    Accessible.name: text
    Accessible.role: Accessible.StaticText
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignLeft
    maximumLineCount: 1
    verticalAlignment: Text.AlignVCenter
}
