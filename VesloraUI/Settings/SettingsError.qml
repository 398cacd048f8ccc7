// SPDX-License-Identifier: MIT
// Why something could not be done, below the row that asked for it. Takes no room while there is nothing to say.
import QtQuick
import Veslora

SettingsText {
    // Is spoken when it comes to show.
    Accessible.role: Accessible.Notification
    color: SettingsColors.error
    visible: text !== ""
    wrapMode: Text.Wrap

    font {
        pixelSize: SettingsSizes.detail
    }
}
