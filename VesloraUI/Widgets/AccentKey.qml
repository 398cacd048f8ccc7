// SPDX-License-Identifier: MIT
// An accent to choose: a disc of its colour, in a ring while it is in use. Fills the tray from top to bottom, so that
// it is no small thing to hit.
import QtQuick
import Veslora

Item {
    id: key

    required property var accent
    property bool isSelected: false
    signal clicked

    width: 14

    AccentSwatch {
        anchors.alignWhenCentered: false
        anchors.centerIn: parent
        color: key.accent.color
        isSelected: key.isSelected
    }

    KeyItem {
        id: area

        Accessible.role: Accessible.Button
        anchors.fill: parent
        anchors.leftMargin: -3
        anchors.rightMargin: -3
        helpText: key.accent.helpText
        isSelected: key.isSelected
        text: key.accent.label
        onClicked: key.clicked()

        Tip {
            isWanted: area.isHovered && !area.isPressed
            text: area.helpText
        }
    }
}
