// SPDX-License-Identifier: MIT
// When no alert is to show for a while: by the desktop's word, or by the user's.
import QtQuick
import Veslora

SettingsGroup {
    id: section

    /// Presses a key that goes with it, and gives the focus that it had to the one in its place.
    function press(key: SettingsButton, change: var, next: SettingsButton) {
        const hadFocus = key.activeFocus;
        const reason = key.visualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason;
        change();
        if (hadFocus) {
            next.forceActiveFocus(reason);
        }
    }

    AlertPausePresenter {
        id: pause
    }

    SettingsToggle {
        detail: qsTr("While the desktop's own do-not-disturb is on, prompts go straight to their terminals.")
        key: "followDoNotDisturb"
        title: qsTr("Follow Do Not Disturb")
    }

    Item {
        readonly property real needed: Math.max(label.height, keys.height)

        width: parent.width
        // Never gives way to a shorter text: a page that is scrolled to its end would move below the pointer.
        onNeededChanged: height = Math.max(height, needed)

        SettingLabel {
            id: label

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            detail: pause.detail
            isRead: true
            title: qsTr("Pause alerts")
            width: parent.width - keys.width - 16
        }

        Row {
            id: keys

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            SettingsButton {
                id: forAnHour

                Accessible.description: label.title
                text: qsTr("1 Hour")
                visible: !pause.isPaused
                onClicked: section.press(forAnHour, () => pause.pauseForAnHour(), end)
            }

            SettingsButton {
                id: untilTomorrow

                Accessible.description: label.title
                text: qsTr("Until Tomorrow")
                visible: !pause.isPaused
                onClicked: section.press(untilTomorrow, () => pause.pauseUntilTomorrow(), end)
            }

            SettingsButton {
                id: end

                Accessible.description: label.title
                text: qsTr("Resume")
                visible: pause.isPaused
                onClicked: section.press(end, () => pause.resume(), forAnHour)
            }
        }
    }
}
