// SPDX-License-Identifier: MIT
// A push button of the settings window; reachable by keyboard, as in any window.
import QtQuick
import QtQuick.Templates as T
import Veslora

T.Button {
    id: button

    /// What assistive programs and the Enter key do, as a click does.
    function act() {
        if (enabled) {
            clicked();
        }
    }

    Accessible.name: text
    implicitHeight: 26
    implicitWidth: Math.max(72, implicitContentWidth + 24)
    // Qt 6.4 offers a press to assistive programs and leaves it to the control to do something.
    Accessible.onPressAction: act()
    Keys.onEnterPressed: event => event.isAutoRepeat || act()
    Keys.onReturnPressed: event => event.isAutoRepeat || act()

    background: Rectangle {
        border.color: button.visualFocus ? VesloraStyle.accentColor : "transparent"
        border.width: 1.5
        color: button.down ? SettingsColors.controlPressed : SettingsColors.control
        radius: 6
    }
    contentItem: Text {
        color: SettingsColors.text
        horizontalAlignment: Text.AlignHCenter
        opacity: button.enabled ? 1 : 0.4
        text: button.text
        verticalAlignment: Text.AlignVCenter

        font {
            family: VesloraStyle.systemFont
            pixelSize: 12
            weight: Font.Medium
        }
    }
}
