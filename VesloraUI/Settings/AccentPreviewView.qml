// SPDX-License-Identifier: MIT
// The small island that shows the accent as it is used, on the strip of a screen's upper edge.
import QtQuick
import Veslora

Rectangle {
    id: view

    required property AccentPreview preview

    Accessible.name: qsTr("Preview of the island in this accent")
    Accessible.role: Accessible.Graphic
    clip: true
    color: SettingsColors.control
    // Nothing of it can be pressed.
    enabled: false
    height: preview.height
    implicitWidth: preview.width
    radius: 6

    NotchView {
        // As the island itself, which is the same in every language.
        LayoutMirroring.childrenInherit: true
        LayoutMirroring.enabled: false
        anchors.fill: parent
        model: view.preview.model
    }
}
