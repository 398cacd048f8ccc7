// SPDX-License-Identifier: MIT
// The tabs of the settings window, in a row as wide as their names need.
import QtQuick

Row {
    id: tabs

    /// The `SettingsPage`s that they lead to.
    required property var pages
    /// Number of the page that was chosen, from 0.
    property int current: 0

    /// Goes to the page of that name, if there is one.
    function select(name: string) {
        for (let index = 0; index < pages.length; ++index) {
            if (pages[index].name === name) {
                repeater.itemAt(index).checked = true;
            }
        }
    }

    spacing: 2

    Repeater {
        id: repeater

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
