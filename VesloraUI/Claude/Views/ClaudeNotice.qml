// SPDX-License-Identifier: MIT
// A session that waits in its terminal, without a request that could be answered from here.
import QtQuick
import Veslora

Item {
    id: view

    required property AgentsModel agents

    ClaudeNoticePresenter {
        id: presenter

        agents: view.agents
        isLive: view.enabled
    }

    Column {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3
        width: keys.x - 12

        SystemText {
            color: VesloraStyle.textPrimary
            elide: Text.ElideRight
            height: 16
            maximumLineCount: 1
            text: presenter.name
            verticalAlignment: Text.AlignVCenter
            width: parent.width

            font {
                pixelSize: 13
                weight: Font.DemiBold
            }
        }

        VesloraLabel {
            text: presenter.message
            width: parent.width
        }

        Row {
            spacing: 6

            VesloraLabel {
                color: VesloraStyle.urgentColor
                text: qsTr("Approve")
            }

            VesloraLabel {
                color: VesloraStyle.urgentColor
                text: presenter.moreText
            }
        }
    }

    Row {
        id: keys

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        KeyButton {
            isPrimary: true
            text: qsTr("Jump")
            tint: VesloraStyle.urgentColor
            onClicked: presenter.jump()
        }

        KeyButton {
            text: qsTr("Dismiss")
            onClicked: presenter.dismiss()
        }
    }
}
