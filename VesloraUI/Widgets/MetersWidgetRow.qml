// SPDX-License-Identifier: MIT
// One of the machine's meters with its label and its figure; where there is room, its detail below.
import QtQuick
import Veslora

Item {
    id: meterRow

    required property var row
    required property bool isWide
    readonly property int lineHeight: isWide ? 14 : 28

    height: isWide ? detail.y + detail.height : lineHeight

    VesloraLabel {
        height: meterRow.lineHeight
        text: meterRow.row.label
        width: 26
    }

    SegmentedMeter {
        fraction: meterRow.row.fraction
        height: meterRow.isWide ? 7 : 10
        segments: meterRow.isWide ? 20 : 10
        tint: meterRow.row.isUrgent ? VesloraStyle.urgentColor : VesloraStyle.accentColor
        width: figure.x - 6 - x
        x: 32
        y: (meterRow.lineHeight - height) / 2
    }

    Text {
        id: figure

        Accessible.name: text
        Accessible.role: Accessible.StaticText
        anchors.right: parent.right
        color: meterRow.row.isUrgent ? VesloraStyle.urgentColor : VesloraStyle.textPrimary
        height: meterRow.lineHeight
        horizontalAlignment: Text.AlignRight
        text: meterRow.row.figure
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        width: 36

        font {
            family: VesloraStyle.monospacedFont
            pixelSize: 12
            preferShaping: false
            weight: Font.DemiBold
        }
    }

    VesloraLabel {
        id: detail

        text: meterRow.row.detail
        visible: meterRow.isWide
        width: parent.width - x
        x: 32
        y: meterRow.lineHeight + 1
    }
}
