// SPDX-License-Identifier: MIT
import QtQuick
import Veslora

Column {
    id: view

    required property string version

    spacing: 18

    SettingsGroup {
        width: parent.width

        SettingLabel {
            title: qsTr("Version %1").arg(view.version)
            width: parent.width
        }
    }
}
