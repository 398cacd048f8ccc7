// SPDX-License-Identifier: MIT
// The agents' tab: their hooks, and what the island makes of what they tell.
import QtQuick
import Veslora

Column {
    id: view

    required property AgentsModel agents

    spacing: 18

    Repeater {
        model: view.agents.kinds

        AgentHooksSection {
            required property int modelData

            agent: modelData
            agents: view.agents
            width: view.width
        }
    }

    SettingsGroup {
        width: parent.width

        SettingsToggle {
            detail: qsTr("The island drops down when a session waits for your permission.")
            key: "claudeApprovalAlerts"
            title: qsTr("Approval alerts")
        }

        SettingsToggle {
            detail: qsTr("ALLOW and DENY in the island when you're not in the session's app; the terminal prompt shows after 20 s.")
            key: "claudeAnswerFromIsland"
            title: qsTr("Answer approvals from the island")
        }

        SettingsToggle {
            detail: qsTr("Plays once for each new request.")
            key: "claudeApprovalSound"
            title: qsTr("Sound for approvals")
        }

        SettingsToggle {
            detail: qsTr("Shows DONE beside the notch for a few seconds when a session finishes.")
            key: "claudeFinishedActivity"
            title: qsTr("Finished turns")
        }

        SettingsToggle {
            detail: qsTr("The agent's spinner beside the notch while a session works, when no timer or music is showing.")
            key: "claudeWorkingActivity"
            title: qsTr("Working live activity")
        }
    }

    AlertPauseSettings {
        width: parent.width
    }
}
