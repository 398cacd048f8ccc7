// SPDX-License-Identifier: MIT
// The music tab: whose music shows, and where.
import QtQuick
import Veslora

Column {
    spacing: 18

    MusicSettingsPresenter {
        id: presenter
    }

    SettingsGroup {
        width: parent.width

        SettingsToggle {
            detail: PlatformTexts.otherPlayers
            key: "musicShowOtherApps"
            title: qsTr("Show other apps")
        }

        SettingsToggle {
            detail: qsTr("Cover and level bars beside the notch while music plays.")
            key: "musicLiveActivity"
            title: qsTr("Music live activity")
        }

        SettingLabel {
            detail: presenter.automation
            isRead: true
            title: qsTr("Control Spotify")
            width: parent.width
        }
    }
}
