// SPDX-License-Identifier: MIT
// The keep-awake tab: what a session keeps on, and what counts as one.
import QtQuick
import Veslora

Column {
    spacing: 18

    SettingsGroup {
        footer: PlatformTexts.lidStillSleeps
        width: parent.width

        SettingsToggle {
            detail: qsTr("During a Keep Awake session the screen doesn't dim or sleep either.")
            key: "keepAwakeDisplay"
            title: qsTr("Keep the display on")
        }

        SettingsToggle {
            detail: PlatformTexts.awakeWhileAgentWorks
            key: "keepAwakeWhileClaude"
            title: qsTr("Stay awake while an agent is working")
        }

        SettingsToggle {
            detail: qsTr("The time left beside the notch during a session.")
            key: "keepAwakeLiveActivity"
            title: qsTr("Show a live activity")
        }
    }
}
