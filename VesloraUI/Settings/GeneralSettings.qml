// SPDX-License-Identifier: MIT
import QtQuick
import Veslora

Column {
    id: view

    required property string version

    spacing: 18

    SettingsGroup {
        width: parent.width

        SettingsToggle {
            detail: qsTr("Keeps the island out of the way of videos, games and presentations. A timer's done alert still shows.")
            key: "hideInFullscreen"
            title: qsTr("Hide when an app is fullscreen")
        }

        SettingLabel {
            isRead: true
            title: qsTr("Version %1").arg(view.version)
            width: parent.width
        }
    }

    Item {
        height: quit.height
        width: parent.width

        SettingsButton {
            id: quit

            anchors.right: parent.right
            text: qsTr("Quit Veslora")
            onClicked: Qt.quit()
        }
    }
}
