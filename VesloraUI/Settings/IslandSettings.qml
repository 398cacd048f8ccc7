// SPDX-License-Identifier: MIT
// The island's tab: where it is, how it looks, and what it shows beside the notch.
import QtQuick
import Veslora

Column {
    id: view

    required property AccentPreview preview

    spacing: 18

    IslandSettingsPresenter {
        id: presenter
    }

    TextSetting {
        id: priority

        readonly property list<string> values: ["music", "timer"]

        key: "liveActivityPriority"
    }

    SettingsGroup {
        width: parent.width

        SettingsPicker {
            choices: presenter.screens
            current: presenter.screen
            detail: qsTr("Without a notched display (lid closed), the island uses the main display.")
            title: qsTr("Show on")
            onChosen: index => presenter.chooseScreen(index)
        }

        SettingsAccents {
            accents: presenter.accents
            current: presenter.accent
            title: qsTr("Accent")
            onChosen: place => presenter.chooseAccent(place)
        }

        AccentPreviewView {
            anchors.horizontalCenter: parent.horizontalCenter
            preview: view.preview
            width: Math.min(parent.width, implicitWidth)
        }
    }

    SettingsGroup {
        width: parent.width

        SettingsSlider {
            detail: qsTr("How long the pointer rests on the notch before the island opens.")
            key: "hoverDelay"
            step: 0.05
            title: qsTr("Open on hover after")
            to: 0.5
            //: seconds
            valueText: qsTr("%1 s").arg(value.toLocaleString(Qt.locale(), "f", 2))
        }

        SettingsToggle {
            id: automaticSpacing

            detail: qsTr("Widgets spread out to fill the island. Turn off to set the space between them yourself.")
            key: "widgetSpacingAutomatic"
            title: qsTr("Automatic spacing")
        }

        SettingsSlider {
            detail: qsTr("The island resizes to fit.")
            enabled: !automaticSpacing.value
            from: 8
            key: "widgetSpacing"
            step: 4
            title: qsTr("Space between widgets")
            to: 80
            valueText: value.toLocaleString(Qt.locale(), "f", 0)
        }
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
