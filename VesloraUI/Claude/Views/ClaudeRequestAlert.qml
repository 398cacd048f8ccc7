// SPDX-License-Identifier: MIT
// One permission request: what the agent wants to do, how long the island may answer, and the three answers.
import QtQuick
import Veslora

Item {
    id: view

    required property AgentsModel agents
    required property PressJudge judge
    required property string requestId
    /// The text that an answer is about.
    readonly property Item body: body

    // Is spoken when it comes to show: a screen reader's user learns of it as others see it. Of an alert's role
    // Orca says nothing when it shows, of a notification's all.
    Accessible.name: presenter.spokenText
    Accessible.role: Accessible.Notification

    Timeline {
        id: timeline

        period: 0.1
    }

    ClaudeRequestPresenter {
        id: presenter

        agents: view.agents
        date: timeline.date
        isArmed: view.judge.isArmed
        isTextProven: body.isProven
        requestId: view.requestId
    }

    Row {
        height: 12
        spacing: 6
        width: parent.width

        VesloraLabel {
            id: title

            color: VesloraStyle.urgentColor
            text: presenter.title
        }

        VesloraLabel {
            text: presenter.sessionName
            width: Math.min(implicitWidth, parent.width - title.width - waiting.width - 2 * parent.spacing)
        }
    }

    VesloraLabel {
        id: waiting

        anchors.right: parent.right
        anchors.rightMargin: -font.letterSpacing
        text: presenter.waitingText
    }

    ProvenText {
        id: body

        Accessible.name: shownText
        Accessible.role: Accessible.StaticText
        color: VesloraStyle.textPrimary
        height: 28
        text: presenter.text
        width: parent.width
        y: 17

        font {
            family: VesloraStyle.systemFont
            pixelSize: 11
            weight: Font.Medium
        }
    }

    Item {
        anchors.bottom: parent.bottom
        height: 26
        width: parent.width

        VesloraLabel {
            color: VesloraStyle.urgentColor
            text: presenter.note
            visible: text !== ""
            width: fuse.width
            y: 4
        }

        Fuse {
            id: fuse

            fraction: presenter.progress
            height: 2
            width: keys.x - 12
            y: presenter.note === "" ? 12 : 20
        }

        Row {
            id: keys

            anchors.right: parent.right
            spacing: 6

            KeyButton {
                helpText: qsTr("Answer in the terminal")
                text: qsTr("Jump")
                onClicked: presenter.jump()
            }

            KeyButton {
                enabled: presenter.isDenyEnabled
                isDimmed: !presenter.isDenyEnabled
                judge: view.judge
                text: qsTr("Deny")
                onClicked: presenter.deny()
            }

            KeyButton {
                enabled: presenter.isAllowEnabled
                isDimmed: !presenter.isAllowEnabled
                isPrimary: true
                judge: view.judge
                text: qsTr("Allow")
                onClicked: presenter.allow()
            }
        }
    }
}
