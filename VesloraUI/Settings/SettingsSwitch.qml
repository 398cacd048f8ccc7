// SPDX-License-Identifier: MIT
// A row with a switch. Who uses it says what shows, and is told of what the user wants.
import QtQuick
import QtQuick.Templates as T
import Veslora

Item {
    id: row

    property alias title: label.title
    property alias detail: label.detail
    required property bool value

    /// The user wants it so; `value` tells whether it became so.
    signal changed(bool isOn)

    height: Math.max(label.height, toggle.height)
    width: parent ? parent.width : 0

    SettingLabel {
        id: label

        anchors.left: parent.left
        width: parent.width - toggle.width - 16
    }

    T.Switch {
        id: toggle

        /// What assistive programs and the Enter key do, as a click does.
        function act() {
            toggle.toggle();
            toggled();
        }

        Accessible.description: row.detail
        Accessible.name: row.title
        anchors.right: parent.right
        checked: row.value
        implicitHeight: 20 * SettingsSizes.scale
        implicitWidth: 34 * SettingsSizes.scale
        // By itself Qt 6.4 turns the switch for assistive programs, but tells nobody.
        Accessible.onPressAction: act()
        Accessible.onToggleAction: act()
        Keys.onEnterPressed: event => event.isAutoRepeat || act()
        Keys.onReturnPressed: event => event.isAutoRepeat || act()
        onToggled: {
            row.changed(checked);
            // What shows is what is, also where the wish was refused.
            checked = Qt.binding(() => row.value);
        }

        indicator: Rectangle {
            border.color: SettingsColors.trackBorder
            color: toggle.checked ? SettingsColors.accentFill : toggle.hovered ? SettingsColors.trackHovered : SettingsColors.track
            height: toggle.implicitHeight
            opacity: toggle.enabled ? 1 : 0.4
            radius: height / 2
            width: toggle.implicitWidth

            // Around it, where it shows beside either colour.
            Rectangle {
                anchors.fill: parent
                anchors.margins: -3
                border.color: SettingsColors.text
                border.width: 1.5
                color: "transparent"
                radius: height / 2
                visible: toggle.visualFocus
            }

            Rectangle {
                color: toggle.checked ? SettingsColors.knobOnAccent : SettingsColors.knob
                height: parent.height - 2 * y
                radius: height / 2
                width: height
                x: toggle.checked !== toggle.mirrored ? parent.width - width - y : y
                y: 2 * SettingsSizes.scale

                Behavior on x {
                    NumberAnimation {
                        duration: 100
                        easing.type: Easing.OutQuad
                    }
                }
            }
        }
    }
}
