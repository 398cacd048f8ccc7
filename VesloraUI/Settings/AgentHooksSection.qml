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
        height: Math.max(button.height, status.height)
        width: parent.width

        SettingsText {
            id: status

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            color: SettingsColors.secondary
            text: hooks.statusText
            width: parent.width - button.width - 16
            wrapMode: Text.Wrap

            font {
                pixelSize: SettingsSizes.control
            }
        }

        SettingsButton {
            id: button

            Accessible.description: hooks.title
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: hooks.buttonText
            onClicked: hooks.press()
        }
    }

    Item {
        height: Math.max(tryIt.height, signs.height)
        visible: signals.signText !== ""
        width: parent.width

        AgentSignPresenter {
            id: signals

            agent: section.agent
            agents: section.agents
        }

        Column {
            id: signs

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
            width: parent.width - tryIt.width - 16

            SettingsText {
                color: signals.isMissing ? SettingsColors.error : SettingsColors.secondary
                text: signals.signText
                width: parent.width
                wrapMode: Text.Wrap

                font {
                    pixelSize: SettingsSizes.detail
                }
            }

            SettingsText {
                // Is spoken when it comes to show.
                Accessible.role: Accessible.Notification
                color: SettingsColors.text
                text: signals.trialText
                visible: text !== ""
                width: parent.width
                wrapMode: Text.Wrap

                font {
                    pixelSize: SettingsSizes.detail
                }
            }
        }

        SettingsButton {
            id: tryIt

            Accessible.description: hooks.title
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            enabled: signals.canTry
            text: qsTr("Try It")
            onClicked: signals.tryIt()
        }
    }

    SettingsError {
        text: hooks.errorText
        width: parent.width
    }
}
