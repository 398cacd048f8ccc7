// SPDX-License-Identifier: MIT
// A row with a switch that is bound to one setting.
import QtQuick
import Veslora

SettingsSwitch {
    id: row

    required property string key

    value: setting.value

    onChanged: isOn => setting.value = isOn

    BoolSetting {
        id: setting

        key: row.key
    }
}
