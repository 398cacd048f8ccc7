// SPDX-License-Identifier: MIT
// The timer's tab: how it tells of its end.
import QtQuick
import Veslora

Column {
    spacing: 18

    TimerSettingsPresenter {
        id: presenter
    }

    SettingsGroup {
        width: parent.width

        SettingsPicker {
            choices: presenter.sounds
            current: presenter.sound
            title: qsTr("Sound when done")
            onChosen: index => presenter.chooseSound(index)
        }

        SettingsToggle {
            detail: PlatformTexts.notifyWhenTimerEnds
            key: "timerNotifications"
            title: qsTr("Notify when a timer ends")
        }
    }
}
