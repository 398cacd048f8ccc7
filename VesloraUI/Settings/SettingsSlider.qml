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
    /// Between two values that it can be moved to; 0 for any value, where a key goes on by a twentieth.
    property real step: 0
    /// The value in words, which stands beside it; empty for none. `value` is what they are to be about.
    property string valueText
    readonly property real value: slider.value

    height: Math.max(label.height, slider.height)
    width: parent ? parent.width : 0

    NumberSetting {
        id: setting

        key: row.key
    }

    SettingLabel {
        id: label

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        opacity: row.enabled ? 1 : 0.4
        width: parent.width - slider.width - (words.visible ? words.width : 0) - 16
    }

    SettingsText {
        id: words

        Accessible.ignored: true
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        color: SettingsColors.secondary
        horizontalAlignment: Text.AlignRight
        opacity: label.opacity
        text: row.valueText
        visible: text !== ""
        width: Math.max(56 * SettingsSizes.scale, implicitWidth)

        font {
            pixelSize: SettingsSizes.control
        }
    }

    T.Slider {
        id: slider

        // Qt 6.4 has no other place for a value in words.
        Accessible.description: row.valueText === "" || row.detail === "" ? row.valueText + row.detail : row.valueText + ". " + row.detail
        Accessible.name: row.title
        anchors.right: words.visible ? words.left : parent.right
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 20 * SettingsSizes.scale
        implicitWidth: (words.visible ? 150 : 220) * SettingsSizes.scale
        opacity: label.opacity
        snapMode: row.step > 0 ? T.Slider.SnapAlways : T.Slider.NoSnap
        // Of a key, and of what assistive programs do.
        stepSize: row.step > 0 ? row.step : (to - from) / 20
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
            border.color: SettingsColors.trackBorder
            color: SettingsColors.track
            height: 4 * SettingsSizes.scale
            radius: height / 2
            width: slider.width

            Rectangle {
                color: SettingsColors.accentFill
                height: parent.height
                radius: height / 2
                width: slider.position * parent.width
                x: slider.mirrored ? parent.width - width : 0
            }
        }
        handle: Rectangle {
            border.color: SettingsColors.handleBorder
            color: slider.pressed || slider.hovered ? SettingsColors.handleHovered : SettingsColors.handle
            height: 16 * SettingsSizes.scale
            radius: height / 2
            width: height
            x: slider.visualPosition * (slider.width - width)
            y: (slider.height - height) / 2

            // Around it, where it shows beside any colour.
            Rectangle {
                anchors.fill: parent
                anchors.margins: -3
                border.color: SettingsColors.accentFill
                border.width: 1.5
                color: "transparent"
                radius: height / 2
                visible: slider.visualFocus
            }
        }
    }
}
