// SPDX-License-Identifier: MIT
// The lamp beside the notch that flashes with each beat.
import QtQuick
import Veslora

Item {
    id: lamp

    /// From 0, dark, to 1.
    required property real light
    /// Of the first beat of a bar.
    required property bool isAccented
    readonly property real size: 8
    readonly property real brightness: isAccented ? 1 : 0.75

    height: size
    width: size

    Image {
        anchors.centerIn: parent
        height: width
        opacity: lamp.light * lamp.brightness
        source: "image://veslora/glow/" + lamp.size + "/" + VesloraStyle.accentColor.toString().slice(1)
        // The glow fades out three deviations of 3 points beyond the lamp.
        width: lamp.size + 18
    }

    PixelRectangle {
        anchors.fill: parent
        color: VesloraStyle.accentColor
        opacity: 0.2 + lamp.light * (lamp.brightness - 0.2)
        radius: 1.5
    }
}
