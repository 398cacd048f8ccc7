// SPDX-License-Identifier: MIT
// The agents' tab: their hooks, and what the island makes of what they tell.
import QtQuick
import Veslora

Column {
    id: view

    required property AgentsModel agents

    spacing: 18

    AgentHooksSection {
        agent: AgentsModel.Claude
        agents: view.agents
        detail: qsTr("Adds a status line (for the usage widget; a status line you already have keeps showing) and six hooks to ~/.claude/settings.json (backed up first) so Veslora knows when a session needs your approval or finishes. Remove takes out only Veslora's.")
        footer: qsTr("Without hooks, sessions and their working time still show; approvals don't.")
        title: qsTr("Claude Code: hooks and status line")
        width: parent.width
    }

    AgentHooksSection {
        agent: AgentsModel.Codex
        agents: view.agents
        detail: qsTr("Adds eight hooks to ~/.codex/hooks.json (backed up first) so Veslora sees Codex CLI sessions and can answer their approvals. Remove takes out only Veslora's. Usage needs no install.")
        footer: qsTr("Then run /hooks in Codex once and trust them: Codex runs new hooks only after you've reviewed them.")
        title: qsTr("Codex: hooks")
        width: parent.width
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
}
