// SPDX-License-Identifier: MIT
// A row with a slider that is bound to one setting.
import QtQuick
import QtQuick.Templates as T
import Veslora

Item {
    id: row

    property alias title: label.title
    property alias detail: label.detail
    property alias from: slider.from
    property alias to: slider.to
    required property string key

    height: Math.max(label.height, slider.height)
    width: parent ? parent.width : 0

    NumberSetting {
        id: setting

        key: row.key
    }

    SettingLabel {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - slider.width - 16
    }

    T.Slider {
        id: slider

        Accessible.description: row.detail
        Accessible.name: row.title
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 20
        implicitWidth: 220
        // Of a key, and of what assistive programs do: a twentieth.
        stepSize: (to - from) / 20
        value: setting.value
        // The page scrolls under the wheel; nobody would notice what it changed on the way.
        wheelEnabled: false
        Accessible.onDecreaseAction: {
            decrease();
            moved();
        }
        Accessible.onIncreaseAction: {
            increase();
            moved();
        }
        onMoved: {
            setting.value = value;
            // What shows is what the store holds, also when it refused.
            value = Qt.binding(() => setting.value);
        }

        background: Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            color: SettingsColors.control
            height: 4
            radius: 2
            width: slider.width

            Rectangle {
                color: VesloraStyle.accentColor
                height: parent.height
                radius: 2
                width: slider.visualPosition * parent.width
            }
        }
        handle: Rectangle {
            color: "white"
            height: 16
            radius: 8
            width: 16
            x: slider.visualPosition * (slider.width - width)
            y: (slider.height - height) / 2

            // Around it, where it shows beside any colour.
            Rectangle {
                anchors.fill: parent
                anchors.margins: -3
                border.color: VesloraStyle.accentColor
                border.width: 1.5
                color: "transparent"
                radius: height / 2
                visible: slider.visualFocus
            }
        }
    }
}
