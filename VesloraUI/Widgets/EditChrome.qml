// SPDX-License-Identifier: MIT
// What frames the rack while it is edited: the strip beside the notch and the tray below. As wide as the island is at
// the moment.
import QtQuick
import Veslora

Item {
    id: chrome

    required property RackModel rack
    required property real notchWidth
    required property real notchHeight
    /// Points that are left free at each side.
    required property real padding
    /// Points from the top of the screen to the tray.
    required property real trayTop

    Spring {
        id: presence

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
                width: Math.max(0, parent.width - 2 * chrome.padding)
                x: chrome.padding
            }

            EditTray {
                anchors.horizontalCenter: parent.horizontalCenter
                maximumWidth: parent.width - 2 * chrome.padding
                rack: chrome.rack
                y: chrome.trayTop
            }
        }
    }
}
