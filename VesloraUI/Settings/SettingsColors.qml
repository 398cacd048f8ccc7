// SPDX-License-Identifier: MIT
// The colours of the settings window, which is dark as the island is.
pragma Singleton
import QtQuick

QtObject {
    readonly property color window: "#1c1c1e"
    readonly property color group: "#2a2a2c"
    readonly property color line: "#3a3a3c"
    readonly property color text: "#f2f2f2"
    readonly property color secondary: "#a0a0a5"
    readonly property color control: "#48484a"
    readonly property color controlPressed: "#5a5a5c"
    readonly property color error: "#ff6b57"
}
