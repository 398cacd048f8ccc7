// SPDX-License-Identifier: MIT
// The colours of the settings window, by the desktop's look.
pragma Singleton
import QtQuick
import Veslora

QtObject {
    readonly property color window: pick("#1c1c1e", "#f2f2f4", "#000000", "#ffffff")
    readonly property color group: pick("#2a2a2c", "#ffffff", "#000000", "#ffffff")
    readonly property color groupBorder: pick("#2a2a2c", "#e0e0e4", "#ffffff", "#000000")
    readonly property color line: pick("#3a3a3c", "#d4d4d9", "#ffffff", "#000000")
    readonly property color text: pick("#f2f2f2", "#1c1c1e", "#ffffff", "#000000")
    readonly property color secondary: pick("#a0a0a5", "#5c5c62", "#ffffff", "#000000")
    readonly property color error: pick("#ff7a68", "#b3261e", "#ffb4a8", "#8c0000")
    // The face of a push button or of a list.
    readonly property color control: pick("#48484a", "#e6e6ea", "#000000", "#ffffff")
    readonly property color controlHovered: pick("#515153", "#dcdce1", "#333333", "#e0e0e0")
    readonly property color controlPressed: pick("#5a5a5c", "#cfcfd5", "#4d4d4d", "#cccccc")
    // Like the face itself where nothing more is needed to see it.
    readonly property color controlBorder: pick("#48484a", "#c6c6cc", "#ffffff", "#000000")
    readonly property color list: pick("#48484a", "#ffffff", "#000000", "#ffffff")
    // What a switch that is off slides in, and a slider past its value.
    readonly property color track: pick("#48484a", "#85858b", "#000000", "#ffffff")
    readonly property color trackHovered: pick("#58585a", "#75757b", "#333333", "#e0e0e0")
    readonly property color trackBorder: pick("transparent", "transparent", "#ffffff", "#000000")
    readonly property color knob: pick("#ffffff", "#ffffff", "#ffffff", "#000000")
    readonly property color handle: pick("#ffffff", "#ffffff", "#ffffff", "#000000")
    readonly property color handleHovered: pick("#dcdcdc", "#ececf0", "#dcdcdc", "#333333")
    readonly property color handleBorder: pick("#ffffff", "#85858b", "#ffffff", "#000000")
    readonly property color scrollBar: pick("#6e6e72", "#85858b", "#ffffff", "#000000")

    // The user's accent, as far as it can be told from what it lies on: text, shapes, and text in an open list.
    readonly property color accentText: SettingsLook.readable(VesloraStyle.accentColor, [window, group], textRatio)
    readonly property color accentFill: SettingsLook.readable(VesloraStyle.accentColor, [window, group], SettingsLook.isHighContrast ? 4.5 : 3)
    readonly property color accentInList: SettingsLook.readable(VesloraStyle.accentColor, [list, controlPressed], textRatio)
    readonly property color knobOnAccent: SettingsLook.isDark ? "#000000" : "#ffffff"

    readonly property real textRatio: SettingsLook.isHighContrast ? 7 : 4.5

    function pick(dark: color, light: color, darkOfHighContrast: color, lightOfHighContrast: color): color {
        if (SettingsLook.isHighContrast) {
            return SettingsLook.isDark ? darkOfHighContrast : lightOfHighContrast;
        }
        return SettingsLook.isDark ? dark : light;
    }
}
