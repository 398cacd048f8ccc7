// SPDX-License-Identifier: MIT
// The tabs of the settings window, in a row as wide as their names need.
import QtQuick

Row {
    id: tabs

    /// The `SettingsPage`s that they lead to.
    required property var pages
    /// Number of the page that was chosen, from 0.
    property int current: 0

    spacing: 2

    Repeater {
        model: tabs.pages

        SettingsTab {
            required property int index
            required property var modelData

            checked: index === 0
            symbol: modelData.symbol
            text: modelData.title
            onCheckedChanged: {
                if (checked) {
                    tabs.current = index;
                }
            }
        }
    }
}
