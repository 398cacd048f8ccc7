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
    implicitHeight: SettingsSizes.controlHeight
    implicitWidth: Math.max(72 * SettingsSizes.scale, implicitContentWidth + 24 * SettingsSizes.scale)
    // Qt 6.4 offers a press to assistive programs and leaves it to the control to do something.
    Accessible.onPressAction: act()
    Keys.onEnterPressed: event => event.isAutoRepeat || act()
    Keys.onReturnPressed: event => event.isAutoRepeat || act()

    background: Rectangle {
        border.color: button.visualFocus ? SettingsColors.accentFill : SettingsColors.controlBorder
        border.width: button.visualFocus ? 1.5 : 1
        color: button.down ? SettingsColors.controlPressed : button.hovered ? SettingsColors.controlHovered : SettingsColors.control
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
            pixelSize: SettingsSizes.control
            weight: Font.Medium
        }
    }
}
