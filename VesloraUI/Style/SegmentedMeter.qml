// SPDX-License-Identifier: MIT
// A row of ticks, lit from the left up to a fraction.
import QtQuick
import Veslora

Row {
    id: meter

    property real fraction: 0
    property color tint: VesloraStyle.accentColor
    property int segments: 10
    property bool levelColors: false
    property bool reversedLevels: false
    readonly property int lit: VesloraStyle.litSegments(fraction, segments)

    spacing: 2

    Repeater {
        model: meter.segments

        Rectangle {
            required property int index

            color: index >= meter.lit ? VesloraStyle.unlitTick : meter.levelColors ? VesloraStyle.segmentColor(index, meter.segments, meter.reversedLevels) : meter.tint
            height: meter.height
            radius: 1
            width: (meter.width - meter.spacing * (meter.segments - 1)) / meter.segments

            Behavior on color {
                ColorAnimation {
                    duration: 150
                    easing.type: Easing.OutQuad
                }
            }
        }
    }
}
