// SPDX-License-Identifier: MIT
// The tempo, changed by scrolling over it.
import QtQuick
import Veslora

Item {
    id: tempo

    required property int bpm
    required property int size
    signal stepped(int steps)

    height: size + 14
    width: Math.max(number.width, unit.width)

    RollingDigits {
        id: number

        height: tempo.size
        size: tempo.size

        presenter: RollingNumberPresenter {
            number: tempo.bpm
        }
    }

    VesloraLabel {
        id: unit

        text: qsTr("BPM")
        y: tempo.size + 2
    }

    ScrollWheelCatcher {
        anchors.fill: parent
        onStepped: steps => tempo.stepped(steps)

        HoverHandler {
            id: hover
        }

        Tip {
            isWanted: hover.hovered
            text: qsTr("Scroll to change the tempo")
        }
    }
}
