// SPDX-License-Identifier: MIT
// The rack's list of agent sessions. A press on a row brings the session's terminal forward.
import QtQuick
import Veslora

Item {
    id: widget

    required property AgentsModel agents
    required property bool isWide

    Timeline {
        id: timeline

        period: 0.5
    }

    ClaudeWidgetPresenter {
        id: presenter

        agents: widget.agents
        date: timeline.date
        isWide: widget.isWide
    }

    Row {
        height: 12
        spacing: 6

        VesloraLabel {
            text: presenter.title
        }

        VesloraLabel {
            opacity: 0.6
            text: presenter.hooksNote
        }
    }

    VesloraLabel {
        anchors.right: parent.right
        anchors.rightMargin: -font.letterSpacing
        color: VesloraStyle.accentColor
        text: presenter.workingText
    }

    VesloraLabel {
        anchors.horizontalCenter: parent.horizontalCenter
        text: qsTr("No sessions")
        visible: presenter.isEmpty
        y: 18 + (parent.height - 18 - height) / 2
    }

    ListView {
        id: list

        // A row under the pointer is marked a little beyond its own edges.
        readonly property int overhang: 4

        boundsBehavior: Flickable.StopAtBounds
        clip: true
        height: parent.height - y
        model: presenter.rows
        spacing: 5
        topMargin: 1
        width: parent.width + 2 * overhang
        x: -overhang
        y: 17

        delegate: ClaudeWidgetRow {
            isWide: widget.isWide
            overhang: list.overhang
            width: ListView.view.width
            onClicked: presenter.jump(session.id)
        }
    }
}
