// SPDX-License-Identifier: MIT
// Beside the notch: the agent whose session has just finished.
import QtQuick
import Veslora

WingsView {
    id: view

    required property AgentsModel agents

    leading: AgentMarkView {
        anchors.centerIn: parent
        glyph: presenter.glyph
    }
    trailing: Text {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        anchors.centerIn: parent
        color: VesloraStyle.accentColor
        height: 14
        text: qsTr("DONE")
        verticalAlignment: Text.AlignVCenter

        font {
            family: VesloraStyle.monospacedFont
            pixelSize: 12
            weight: Font.DemiBold
        }
    }

    ClaudeActivityPresenter {
        id: presenter

        agents: view.agents
        isLive: view.enabled
        kind: ClaudeActivityPresenter.Finished
    }
}
