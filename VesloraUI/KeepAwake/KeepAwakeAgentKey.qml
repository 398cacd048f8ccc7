// SPDX-License-Identifier: MIT
// A plain word that says whether agents at work keep the machine awake, and changes that when pressed. It takes presses
// alone, never the focus.
import QtQuick
import Veslora

Item {
    id: key

    required property bool isOn
    readonly property string helpText: isOn ? qsTr("Staying awake while an agent is working") : qsTr("Stay awake while an agent is working")
    signal clicked

    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.description: helpText
    Accessible.name: label.text
    Accessible.role: Accessible.Button
    Accessible.onPressAction: key.clicked()
    baselineOffset: label.y + label.baselineOffset
    height: 12
    width: label.implicitWidth

    SystemText {
        id: label

        anchors.centerIn: parent
        color: key.isOn ? VesloraStyle.accentColor : VesloraStyle.textSecondary
        height: 14
        text: qsTr("Agents")
        verticalAlignment: Text.AlignVCenter

        font {
            pixelSize: 11
            weight: Font.DemiBold
        }
    }

    MouseArea {
        id: area

        anchors.fill: parent
        // The word alone would be a small thing to hit.
        anchors.margins: -4
        hoverEnabled: true
        onClicked: key.clicked()
    }

    Tip {
        isWanted: area.containsMouse && !area.pressed
        text: key.helpText
    }
}
