// SPDX-License-Identifier: MIT
// One limit, or the context, of the agent that the usage widget shows: its meter, and below it the detail.
import QtQuick
import Veslora

Item {
    id: row

    required property var reading
    required property bool isWide

    height: detail.y + detail.height
    opacity: reading.isStale ? 0.5 : 1

    ClaudeUsageMeter {
        id: meter

        figureWidth: 36
        height: row.isWide ? 14 : 12
        labelWidth: row.isWide ? 34 : 24
        meterHeight: row.isWide ? 7 : 6
        reading: row.reading
        segments: row.isWide ? 20 : 12
        width: parent.width
    }

    SystemText {
        id: detail

        Accessible.ignored: text === ""
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        color: VesloraStyle.textSecondary
        elide: Text.ElideRight
        font.pixelSize: 10
        height: row.isWide ? 12 : 10
        maximumLineCount: 1
        text: row.reading.detail
        verticalAlignment: Text.AlignVCenter
        width: parent.width - x
        x: meter.labelWidth + 6
        y: meter.height + 1
    }
}
