// SPDX-License-Identifier: MIT
// Both limits of one agent in a line, where the usage widget shows several.
import QtQuick
import Veslora

Row {
    id: agentLine

    required property var line
    readonly property real meterWidth: (width - letters.width - 2 * spacing) / 2

    opacity: line.isStale ? 0.5 : 1
    spacing: 6

    ClaudeUsageGlyph {
        id: letters

        font.bold: true
        glyph: agentLine.line.glyph
        height: parent.height
        width: 16
    }

    ClaudeUsageMeter {
        figureWidth: 34
        height: parent.height
        labelMeetsMeter: true
        labelWidth: 30
        meterHeight: 8
        reading: agentLine.line.fiveHour
        segments: 5
        width: agentLine.meterWidth
    }

    ClaudeUsageMeter {
        figureWidth: 34
        height: parent.height
        labelMeetsMeter: true
        labelWidth: 30
        meterHeight: 8
        reading: agentLine.line.week
        segments: 5
        width: agentLine.meterWidth
    }
}
