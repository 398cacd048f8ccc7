// SPDX-License-Identifier: MIT
// One line of the usage widget: a label, its meter and its figure, in the middle of the line's height.
import QtQuick
import Veslora

Item {
    id: line

    required property var reading
    required property int labelWidth
    required property int figureWidth
    required property int segments
    required property int meterHeight
    property bool labelMeetsMeter: false

    VesloraLabel {
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: line.labelMeetsMeter ? Text.AlignRight : Text.AlignLeft
        text: line.reading.label
        width: line.labelWidth
        // The last letter's tracking hangs out.
        x: line.labelMeetsMeter ? font.letterSpacing : 0
    }

    SegmentedMeter {
        // Half a point is a whole pixel only where there are two of them to a point.
        anchors.alignWhenCentered: Screen.devicePixelRatio < 2
        anchors.verticalCenter: parent.verticalCenter
        fraction: line.reading.fraction
        height: line.meterHeight
        levelColors: true
        segments: line.segments
        width: parent.width - x - 6 - line.figureWidth
        x: line.labelWidth + 6
    }

    Text {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        color: VesloraStyle.textPrimary
        height: 14
        horizontalAlignment: Text.AlignRight
        text: line.reading.percent
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        width: line.figureWidth

        font {
            family: VesloraStyle.monospacedFont
            pixelSize: 12
            preferShaping: false
            weight: Font.DemiBold
        }
    }
}
