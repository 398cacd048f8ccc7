// SPDX-License-Identifier: MIT
// One dot for each page of the rack, the one on show in the accent's colour; a press on another asks for its page.
import QtQuick
import Veslora

Row {
    id: dots

    required property int count
    /// From 0.
    required property int current
    signal select(int index)

    spacing: 5

    Repeater {
        model: dots.count

        PixelRectangle {
            id: dot

            required property int index

            color: index === dots.current ? VesloraStyle.accentColor : VesloraStyle.unlitTick
            height: 5
            radius: 2.5
            width: 5

            KeyItem {
                Accessible.role: Accessible.Button
                anchors.fill: parent
                // The dot alone would be a small thing to hit.
                anchors.margins: -3
                isSelected: dot.index === dots.current
                text: qsTr("Page %1 of %2").arg(dot.index + 1).arg(dots.count)
                onClicked: dots.select(dot.index)
            }
        }
    }
}
