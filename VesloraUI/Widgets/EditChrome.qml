// SPDX-License-Identifier: MIT
// What frames the rack while it is edited: the strip beside the notch and the tray below.
import QtQuick
import Veslora

Item {
    id: chrome

    required property RackModel rack
    required property real notchWidth
    required property real notchHeight
    /// Points that the island leaves to it at the moment, while it grows or shrinks.
    required property real room
    /// Points from the top of the screen to the tray.
    required property real trayTop

    Spring {
        id: presence

        isFade: true
        target: chrome.rack.isEditing ? 1 : 0
    }

    Loader {
        active: presence.value > 0.001
        anchors.fill: parent
        enabled: chrome.rack.isEditing
        opacity: Math.min(1, presence.value)

        sourceComponent: Item {
            EditHeader {
                height: chrome.notchHeight
                notchWidth: chrome.notchWidth
                rack: chrome.rack
                width: Math.max(0, chrome.room)
                x: (parent.width - width) / 2
            }

            EditTray {
                anchors.horizontalCenter: parent.horizontalCenter
                maximumWidth: chrome.room
                rack: chrome.rack
                y: chrome.trayTop
            }
        }
    }
}
