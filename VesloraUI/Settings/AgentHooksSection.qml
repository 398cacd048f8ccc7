// SPDX-License-Identifier: MIT
// One agent's hooks: what they do, whether they are in, and the button that changes that.
import QtQuick
import Veslora

SettingsGroup {
    id: section

    required property int agent
    required property AgentsModel agents

    footer: hooks.footer

    AgentHooksPresenter {
        id: hooks

        agent: section.agent
        agents: section.agents
    }

    SettingLabel {
        detail: hooks.detail
        isRead: true
        title: hooks.title
        width: parent.width
    }

    Item {
        height: button.height
        width: parent.width

        SettingsText {
            anchors.verticalCenter: parent.verticalCenter
            color: SettingsColors.secondary
            text: hooks.statusText

            font {
                pixelSize: 12
            }
        }

        SettingsButton {
            id: button

            Accessible.description: hooks.title
            anchors.right: parent.right
            text: hooks.buttonText
            onClicked: hooks.press()
        }
    }

    SettingsText {
        // Is spoken when it comes to show.
        Accessible.role: Accessible.AlertMessage
        color: SettingsColors.error
        text: hooks.errorText
        visible: text !== ""
        width: parent.width
        wrapMode: Text.Wrap

        font {
            pixelSize: 11
        }
    }
}
