// SPDX-License-Identifier: MIT
// The little mark that stands for an agent.
import QtQuick
import Veslora

Item {
    id: mark

    required property int agent
    readonly property bool isClaude: agent === AgentsModel.Claude

    Accessible.name: isClaude ? qsTr("Claude Code") : qsTr("Codex")
    Accessible.role: Accessible.Graphic
    height: isClaude ? mascot.height : 14
    width: isClaude ? mascot.width : label.implicitWidth

    ClaudeMascotView {
        id: mascot

        cell: 1.5
        visible: mark.isClaude
    }

    Text {
        id: label

        color: VesloraStyle.textPrimary
        height: 14
        text: ">_"
        verticalAlignment: Text.AlignVCenter
        visible: !mark.isClaude

        font {
            bold: true
            family: VesloraStyle.monospacedFont
            pixelSize: 12
        }
    }
}
