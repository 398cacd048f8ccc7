// SPDX-License-Identifier: MIT
// The agents' tab: their hooks, and what the island makes of what they tell.
import QtQuick
import Veslora

Column {
    id: view

    required property AgentsModel agents

    spacing: 18

    ClaudeSettingsPresenter {
        id: claude

        agents: view.agents
    }

    SettingsGroup {
        footer: qsTr("Without hooks, sessions and their working time still show; approvals don't.")
        width: parent.width

        SettingLabel {
            detail: qsTr("Adds a status line (for the usage widget; a status line you already have keeps showing) and six hooks to ~/.claude/settings.json (backed up first) so Veslora knows when a session needs your approval or finishes. Remove takes out only Veslora's.")
            title: qsTr("Claude Code: hooks and status line")
            width: parent.width
        }

        Item {
            height: button.height
            width: parent.width

            Text {
                Accessible.name: text
                Accessible.role: Accessible.StaticText
                anchors.verticalCenter: parent.verticalCenter
                color: SettingsColors.secondary
                text: claude.statusText

                font {
                    family: VesloraStyle.systemFont
                    pixelSize: 12
                }
            }

            SettingsButton {
                id: button

                anchors.right: parent.right
                text: claude.buttonText
                onClicked: claude.press()
            }
        }

        Text {
            color: SettingsColors.error
            text: claude.errorText
            textFormat: Text.PlainText
            visible: text !== ""
            width: parent.width
            wrapMode: Text.Wrap

            font {
                family: VesloraStyle.systemFont
                pixelSize: 11
            }
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
}
