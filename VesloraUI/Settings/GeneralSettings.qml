// SPDX-License-Identifier: MIT
// The general tab: how the program starts, when it hides, how it keeps up to date, and the way to end it.
import QtQuick
import Veslora

Column {
    id: view

    required property LoginItemManager loginItem
    required property UpdaterModel updater
    required property string version

    spacing: 18

    Component.onCompleted: loginItem.refresh()

    SettingsGroup {
        width: parent.width

        SettingsSwitch {
            detail: qsTr("Start Veslora automatically when you log in.")
            title: qsTr("Launch at login")
            value: view.loginItem.isEnabled
            onChanged: isOn => view.loginItem.setEnabled(isOn)
        }

        SettingsError {
            text: view.loginItem.errorMessage
            width: parent.width
        }

        SettingsToggle {
            detail: qsTr("Keeps the island out of the way of videos, games and presentations. A timer's done alert still shows.")
            key: "hideInFullscreen"
            title: qsTr("Hide when an app is fullscreen")
        }
    }

    SettingsGroup {
        width: parent.width

        SettingsSwitch {
            detail: view.updater.isAvailable ? qsTr("Veslora checks once a day and asks before installing.") : qsTr("New versions come with your system's updates.")
            enabled: view.updater.isAvailable
            title: qsTr("Check for updates automatically")
            value: view.updater.automaticallyChecks
            onChanged: isOn => view.updater.automaticallyChecks = isOn
        }

        Item {
            height: Math.max(check.height, version.height)
            width: parent.width

            SettingLabel {
                id: version

                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                isRead: true
                title: qsTr("Version %1").arg(view.version)
                width: parent.width - check.width - 16
            }

            SettingsButton {
                id: check

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                enabled: view.updater.canCheckForUpdates
                text: qsTr("Check Now")
                onClicked: view.updater.checkForUpdates()
            }
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
