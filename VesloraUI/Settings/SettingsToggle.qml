// SPDX-License-Identifier: MIT
// A row with a switch that is bound to one setting.
import QtQuick
import QtQuick.Templates as T
import Veslora

Item {
    id: row

    property alias title: label.title
    property alias detail: label.detail
    required property string key

    height: Math.max(label.height, toggle.height)
    width: parent ? parent.width : 0

    BoolSetting {
        id: setting

        key: row.key
    }

    SettingLabel {
        id: label

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
        checked: setting.value
        implicitHeight: 20
        implicitWidth: 34
        // By itself Qt 6.4 turns the switch for assistive programs, but tells nobody.
        Accessible.onPressAction: act()
        Accessible.onToggleAction: act()
        Keys.onEnterPressed: event => event.isAutoRepeat || act()
        Keys.onReturnPressed: event => event.isAutoRepeat || act()
        onToggled: {
            setting.value = checked;
            // What shows is what the store holds, also when it refused.
            checked = Qt.binding(() => setting.value);
        }

        indicator: Rectangle {
            color: toggle.checked ? VesloraStyle.accentColor : SettingsColors.control
            height: 20
            radius: 10
            width: 34

            // Around it, where it shows beside either colour.
            Rectangle {
                anchors.fill: parent
                anchors.margins: -3
                border.color: "white"
                border.width: 1.5
                color: "transparent"
                radius: height / 2
                visible: toggle.visualFocus
            }

            Rectangle {
                color: toggle.checked ? "black" : "white"
                height: 16
                radius: 8
                width: 16
                x: toggle.checked ? 16 : 2
                y: 2

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
