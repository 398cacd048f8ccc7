// SPDX-License-Identifier: MIT
// Beside the notch: the agent that has worked the longest, and its spinner.
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
        anchors.centerIn: parent
        anchors.verticalCenterOffset: presenter.spinnerOffset
        color: presenter.glyph.color
        text: presenter.spinner

        font {
            family: VesloraStyle.symbolFont
            pixelSize: presenter.spinnerSize
            weight: Font.DemiBold
        }
    }

    Timeline {
        id: timeline

        period: presenter.spinnerPeriod
    }

    ClaudeActivityPresenter {
        id: presenter

        agents: view.agents
        date: timeline.date
        isLive: view.enabled
        kind: ClaudeActivityPresenter.Working
    }
}
