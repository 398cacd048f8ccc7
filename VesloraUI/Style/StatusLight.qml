// SPDX-License-Identifier: MIT
// A small lamp with a glow while it is on.
import QtQuick
import Veslora

Item {
    id: light

    property bool isOn: true
    property color tint: VesloraStyle.accentColor
    property real size: 6

    height: size
    width: size

    FirstFrame {
        id: firstFrame
    }

    Image {
        anchors.centerIn: parent
        height: width
        opacity: light.isOn ? 1 : 0
        source: "image://veslora/glow/" + light.size + "/" + light.tint.toString().slice(1)
        // The glow fades out three deviations of 3 points beyond the lamp.
        width: light.size + 18

        Behavior on opacity {
            enabled: firstFrame.hasPassed

            NumberAnimation {
                duration: 120
                easing.type: Easing.OutQuad
            }
        }
    }

    PixelRectangle {
        anchors.fill: parent
        color: light.tint
        opacity: light.isOn ? 1 : 0.2
        radius: 1.5

        Behavior on opacity {
            enabled: firstFrame.hasPassed

            NumberAnimation {
                duration: 120
                easing.type: Easing.OutQuad
            }
        }
    }
}
