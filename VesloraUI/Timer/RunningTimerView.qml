// SPDX-License-Identifier: MIT
// The countdown in the rack, with the keys that act on it.
import QtQuick
import Veslora

Item {
    id: view

    required property TimerModel timer
    required property bool isWide
    readonly property list<real> keyWidths: isWide ? [0, 0, 0, 0] : VesloraStyle.smallKeyWidths

    Timeline {
        id: timeline

        period: 0.25
    }

    RunningTimerPresenter {
        id: presenter

        date: timeline.date
        fuseWidth: view.width
        timer: view.timer
    }

    VesloraLabel {
        text: presenter.isPaused ? qsTr("Paused") : qsTr("Timer")
    }

    StatusLight {
        anchors.right: parent.right
        isOn: !presenter.isPaused
        y: 3
    }

    RollingTime {
        id: time

        color: presenter.isUrgent ? VesloraStyle.urgentColor : VesloraStyle.textPrimary
        opacity: presenter.timeOpacity
        remaining: presenter.remaining
        size: view.isWide ? 30 : 26
        y: view.isWide ? 19 : 22

        Behavior on color {
            enabled: time.isLive

            ColorAnimation {
                duration: 200
                easing.type: Easing.OutQuad
            }
        }
    }

    Fuse {
        fraction: presenter.fraction
        height: view.isWide ? 4 : 3
        tint: presenter.isUrgent ? VesloraStyle.urgentColor : VesloraStyle.accentColor
        width: parent.width
        y: time.y + time.height + 8

        Behavior on tint {
            enabled: time.isLive

            ColorAnimation {
                duration: 200
                easing.type: Easing.OutQuad
            }
        }
    }

    Row {
        id: keys

        anchors.bottom: parent.bottom
        spacing: view.isWide ? 6 : 4

        KeyButton {
            gap: keys.spacing
            symbol: view.isWide ? "" : presenter.isPaused ? "play.fill" : "pause.fill"
            text: presenter.isPaused ? qsTr("Resume") : qsTr("Pause")
            width: view.keyWidths[0] || implicitWidth
            onClicked: presenter.togglePause()
        }

        KeyButton {
            gap: keys.spacing
            helpText: qsTr("Add a minute")
            symbol: "plus.one"
            symbolSize: 15
            text: helpText
            width: view.keyWidths[1] || implicitWidth
            onClicked: view.timer.add(1)
        }

        KeyButton {
            gap: keys.spacing
            helpText: qsTr("Add 5 minutes")
            symbol: "plus.five"
            symbolSize: 15
            text: helpText
            width: view.keyWidths[2] || implicitWidth
            onClicked: view.timer.add(5)
        }
    }

    KeyButton {
        anchors.bottom: parent.bottom
        gap: keys.spacing
        helpText: qsTr("Cancel the timer")
        symbol: "cancel"
        symbolSize: 12
        text: helpText
        width: view.keyWidths[3] || implicitWidth
        x: view.isWide ? parent.width - width : keys.width + keys.spacing
        onClicked: view.timer.cancel()
    }
}
