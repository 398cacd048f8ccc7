// SPDX-License-Identifier: MIT
// The metronome's tab: how it sounds.
import QtQuick
import Veslora

Column {
    id: view

    required property MetronomeModel previewer

    spacing: 18

    MetronomeSettingsPresenter {
        id: presenter

        previewer: view.previewer
    }

    SettingsGroup {
        width: parent.width

        SettingsPicker {
            choices: presenter.sounds
            current: presenter.sound
            title: qsTr("Sound")
            onChosen: index => presenter.chooseSound(index)
        }

        SettingsSlider {
            key: "metronomeVolume"
            title: qsTr("Volume")
            to: 1
        }

        SettingsToggle {
            detail: qsTr("The first beat of each bar plays higher.")
            key: "metronomeAccent"
            title: qsTr("Downbeat accent")
        }
    }
}
