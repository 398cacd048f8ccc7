// SPDX-License-Identifier: MIT
// A menu that is drawn inside the island's own scene, as no window may open over the panel. It covers what its parent
// covers while it is open: the next press anywhere there closes it, and only that.
import QtQuick
import Veslora

Item {
    id: menu

    /// What the one entry says.
    required property string text
    property bool isOpen: false
    signal chosen

    /// Opens with its corner at that point of the parent, or as near as it fits.
    function popup(atX: real, atY: real) {
        face.x = Math.max(0, Math.min(atX, width - face.width));
        face.y = Math.max(0, Math.min(atY, height - face.height));
        isOpen = true;
    }

    function close() {
        isOpen = false;
    }

    anchors.fill: parent
    visible: isOpen
    z: 90

    KeyItem {
        anchors.fill: parent
        text: qsTr("Close the menu")
        onClicked: menu.close()
        Accessible.role: Accessible.Button
    }

    KeyItem {
        id: face

        height: 26
        text: menu.text
        width: label.width + 24
        onClicked: {
            menu.close();
            menu.chosen();
        }
        Accessible.role: Accessible.Button

        HoverHandler {
            id: hover
        }

        PixelRectangle {
            anchors.fill: parent
            borderColor: VesloraStyle.hairline
            color: VesloraStyle.traySurface
            radius: 6
        }

        PixelRectangle {
            anchors.fill: parent
            anchors.margins: 3
            color: hover.hovered || face.isPressed ? Qt.alpha(VesloraStyle.accentColor, 0.2) : "transparent"
            radius: 4
        }

        SystemText {
            id: label

            anchors.centerIn: parent
            color: VesloraStyle.textPrimary
            font.pixelSize: 12
            height: 14
            text: menu.text
            verticalAlignment: Text.AlignVCenter
        }
    }
}
