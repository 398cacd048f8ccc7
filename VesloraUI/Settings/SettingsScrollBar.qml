// SPDX-License-Identifier: MIT
// The bar beside a page, there only while the page is taller than the window.
import QtQuick
import QtQuick.Templates as T
import Veslora

T.ScrollBar {
    id: bar

    Accessible.name: qsTr("Scroll")
    implicitWidth: 12
    minimumSize: 0.1
    padding: 3
    visible: size < 1

    contentItem: Rectangle {
        color: bar.pressed || bar.hovered ? SettingsColors.secondary : SettingsColors.scrollBar
        radius: width / 2
    }
}
