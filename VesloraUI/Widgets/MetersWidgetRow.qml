// SPDX-License-Identifier: MIT
// One of the machine's meters with its label and its figure; where there is room, its detail below.
import QtQuick
import Veslora

Item {
    id: meterRow

    required property var row
    required property bool isWide

    height: isWide ? detail.y + detail.height : line.height

    Item {
        id: line

        height: meterRow.isWide ? 14 : 28
        width: parent.width

        VesloraLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: meterRow.row.label
            width: 26
        }

        SegmentedMeter {
            // Half a point is a whole pixel only where there are two of them to a point.
            anchors.alignWhenCentered: Screen.devicePixelRatio < 2
            anchors.verticalCenter: parent.verticalCenter
            fraction: meterRow.row.fraction
            height: meterRow.isWide ? 7 : 10
            segments: meterRow.isWide ? 20 : 10
            tint: meterRow.row.isUrgent ? VesloraStyle.urgentColor : VesloraStyle.accentColor
            width: figure.x - 6 - x
            x: 32
        }

        Text {
            id: figure

            Accessible.name: text
            Accessible.role: Accessible.StaticText
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            color: meterRow.row.isUrgent ? VesloraStyle.urgentColor : VesloraStyle.textPrimary
            height: 14
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
    }

    VesloraLabel {
        id: detail

        // Two dashes are not to become one long one.
        font.preferShaping: false
        text: meterRow.row.detail
        visible: meterRow.isWide
        width: parent.width - x
        x: 32
        y: line.height + 1
    }
}
