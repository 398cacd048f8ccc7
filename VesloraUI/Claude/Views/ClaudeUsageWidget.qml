// SPDX-License-Identifier: MIT
// The rack's meters of how much of the agents' limits, of the context and of the day's tokens is used.
import QtQuick
import Veslora

Item {
    id: widget

    required property AgentsModel agents
    required property bool isWide
    readonly property int captionHeight: isWide ? 12 : 11
    readonly property int contentTop: captionHeight + 6

    Timeline {
        id: timeline

        period: 30
    }

    ClaudeUsageWidgetPresenter {
        id: presenter

        agents: widget.agents
        date: timeline.date
        isWide: widget.isWide
    }

    Row {
        height: widget.captionHeight
        spacing: 6

        VesloraLabel {
            height: parent.height
            text: qsTr("Usage")
        }

        ClaudeUsageGlyph {
            font.weight: Font.DemiBold
            glyph: presenter.glyph
            height: parent.height
        }
    }

    VesloraLabel {
        anchors.right: parent.right
        anchors.rightMargin: -font.letterSpacing
        color: VesloraStyle.accentColor
        height: widget.captionHeight
        text: presenter.todayText
        visible: widget.isWide
    }

    Text {
        readonly property real room: parent.height - widget.contentTop - (widget.isWide ? 0 : widget.captionHeight)

        Accessible.ignored: text === ""
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        anchors.horizontalCenter: parent.horizontalCenter
        color: VesloraStyle.textSecondary
        height: 12
        opacity: 0.6
        text: presenter.emptyText
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        y: widget.contentTop + (room - height) / 2

        font {
            capitalization: Font.AllUppercase
            family: VesloraStyle.monospacedFont
            pixelSize: 10
            preferShaping: false
            weight: Font.DemiBold
        }
    }

    Column {
        spacing: 4
        width: parent.width
        y: widget.contentTop

        Repeater {
            model: presenter.rows

            ClaudeUsageRow {
                isWide: widget.isWide
                width: widget.width
            }
        }
    }

    Column {
        spacing: 6
        visible: presenter.showsLines
        width: parent.width
        y: widget.contentTop

        Repeater {
            model: presenter.lines

            ClaudeUsageAgentLine {
                height: 24
                width: widget.width
            }
        }

        ClaudeUsageMeter {
            figureWidth: 36
            height: 24
            labelWidth: 34
            meterHeight: 8
            opacity: presenter.context.isStale ? 0.5 : 1
            reading: presenter.context
            segments: 20
            width: widget.width
        }
    }

    VesloraLabel {
        anchors.bottom: parent.bottom
        color: VesloraStyle.accentColor
        height: widget.captionHeight
        text: presenter.todayText
        visible: !widget.isWide
    }
}
