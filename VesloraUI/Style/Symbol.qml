// SPDX-License-Identifier: MIT
// One of our own symbols, in one colour.
import QtQuick
import Veslora

Image {
    property string name
    property color color: VesloraStyle.textPrimary
    property real size: 15

    height: size
    source: name === "" ? "" : "image://veslora/symbol/" + name + "/" + color.toString().slice(1)
    sourceSize.height: size * Screen.devicePixelRatio
    sourceSize.width: size * Screen.devicePixelRatio
    width: size
}
