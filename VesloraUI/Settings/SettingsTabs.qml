// SPDX-License-Identifier: MIT
// The tabs of the settings window, in a row as wide as their names need. The keyboard takes them for one control: Tab
// leads to the open one, and the arrows from there to the others.
import QtQuick
import Veslora

Row {
    id: tabs

    /// The `SettingsPage`s that they lead to.
    required property var pages
    /// Number of the page that was chosen, from 0.
    property alias current: choice.current
    /// What an arrow to the right does to the number.
    readonly property int stepToTheRight: effectiveLayoutDirection === Qt.RightToLeft ? -1 : 1

    /// Goes to the page of that name, if there is one.
    function select(name: string) {
        for (let index = 0; index < pages.length; ++index) {
            if (pages[index].name === name) {
                choice.choose(index);
            }
        }
    }

    /// Opens the page that many places on, around the ends, and moves the focus to its tab.
    function step(places: int) {
        choice.step(places);
        focusCurrent();
    }

    function open(page: int) {
        choice.choose(page);
        focusCurrent();
    }

    function focusCurrent() {
        items.itemAt(current).forceActiveFocus(Qt.TabFocusReason);
    }

    Accessible.role: Accessible.PageTabList
    spacing: 2
    Keys.onLeftPressed: step(-stepToTheRight)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
            open(event.key === Qt.Key_Home ? 0 : choice.count - 1);
            event.accepted = true;
        }
    }
    Keys.onRightPressed: step(stepToTheRight)

    PageChoice {
        id: choice

        count: tabs.pages.length
    }

    Repeater {
        id: items

        model: tabs.pages

        SettingsTab {
            required property int index
            required property var modelData

            checked: index === choice.current
            symbol: modelData.symbol
            text: modelData.title
            onClicked: choice.choose(index)
        }
    }
}
