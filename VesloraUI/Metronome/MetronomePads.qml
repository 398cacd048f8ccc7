// SPDX-License-Identifier: MIT
// A pad for each beat of a bar; the one that is heard is lit.
import QtQuick
import Veslora

Row {
    id: pads

    required property int beats
    /// The one that is heard, from 0; -1 for none.
    required property int beat
    required property real side
    property real radius: 5
    property bool isNumbered: false

    Repeater {
        model: pads.beats

        Item {
            id: pad

            required property int index
            readonly property bool isLit: index === pads.beat

            Accessible.ignored: true
            height: width
            width: pads.side

            PixelRectangle {
                anchors.fill: parent
                color: pad.isLit ? Qt.alpha(VesloraStyle.accentColor, pad.index === 0 ? 1 : 0.75) : VesloraStyle.unlitTick
                gap: pads.spacing
                radius: pads.radius
            }

            SystemText {
                anchors.centerIn: parent
                color: pad.isLit ? "black" : VesloraStyle.textSecondary
                text: pad.index + 1
                visible: pads.isNumbered

                font {
                    pixelSize: 9
                    weight: Font.DemiBold
                }
            }
        }
    }
}
