// SPDX-License-Identifier: MIT
// The idle timer: its length, set by scrolling or by a key, and the key that starts it.
import QtQuick
import Veslora

Item {
    id: view

    required property TimerModel timer
    required property bool isWide

    TimerPickerPresenter {
        id: presenter

        isWide: view.isWide
        timer: view.timer
    }

    VesloraLabel {
        text: presenter.caption
    }

    VesloraLabel {
        anchors.right: parent.right
        anchors.rightMargin: -font.letterSpacing
        opacity: 0.7
        text: qsTr("Scroll to set")
        visible: presenter.hasHint
    }

    Column {
        id: length

        spacing: 8
        width: parent.width
        y: view.isWide ? 19 : 22

        RollingTime {
            remaining: presenter.seconds
            size: view.isWide ? 30 : 26
        }

        SegmentedMeter {
            fraction: presenter.fraction
            height: view.isWide ? 6 : 5
            segments: presenter.segments
            tint: Qt.alpha(VesloraStyle.accentColor, 0.5)
            width: parent.width
        }
    }

    ScrollWheelCatcher {
        anchors.fill: length
        onStepped: steps => view.timer.adjustSelection(steps)

        HoverHandler {
            id: hover
        }

        Tip {
            isWanted: hover.hovered
            text: qsTr("Scroll to change the time")
        }
    }

    Row {
        id: presets

        anchors.bottom: parent.bottom
        spacing: view.isWide ? 6 : 4

        Repeater {
            model: presenter.presets

            KeyButton {
                required property int index
                required property int modelData

                gap: presets.spacing
                helpText: presenter.presetHelp(modelData)
                text: modelData
                width: view.isWide ? implicitWidth : VesloraStyle.smallKeyWidths[index]
                onClicked: view.timer.select(modelData)
            }
        }
    }

    KeyButton {
        anchors.bottom: parent.bottom
        gap: presets.spacing
        isPrimary: true
        symbol: view.isWide ? "" : "play.fill"
        text: qsTr("Start")
        width: view.isWide ? implicitWidth : VesloraStyle.smallKeyWidths[3]
        x: view.isWide ? parent.width - width : presets.width + presets.spacing
        onClicked: view.timer.start()
    }
}
