// SPDX-License-Identifier: MIT
// The island's tab: what it shows beside the notch.
import QtQuick
import Veslora

Column {
    spacing: 18

    TextSetting {
        id: priority

        readonly property list<string> values: ["music", "timer"]

        key: "liveActivityPriority"
    }

    SettingsGroup {
        width: parent.width

        SettingsPicker {
            choices: [qsTr("Music"), qsTr("Timer")]
            current: priority.values.indexOf(priority.value)
            detail: qsTr("Which one shows beside the notch when music plays during a timer. A finished timer always shows.")
            title: qsTr("Live activity priority")
            onChosen: index => priority.value = priority.values[index]
        }
    }
}
