// SPDX-License-Identifier: MIT
// Beside the notch: the time left, and the fuse that burns down with it.
import QtQuick
import Veslora

WingsView {
    id: view

    required property TimerModel timer
    readonly property real fuseWidth: 25

    leading: RollingTime {
        id: time

        anchors.centerIn: parent
        color: presenter.isUrgent ? VesloraStyle.urgentColor : VesloraStyle.textPrimary
        height: 14
        isMonospaced: true
        opacity: presenter.timeOpacity
        remaining: presenter.remaining
        size: 12

        Behavior on color {
            enabled: time.isLive

            ColorAnimation {
                duration: 200
                easing.type: Easing.OutQuad
            }
        }
    }
    trailing: Fuse {
        anchors.centerIn: parent
        fraction: presenter.fraction
        height: 3
        tint: presenter.isUrgent ? VesloraStyle.urgentColor : VesloraStyle.accentColor
        width: view.fuseWidth

        Behavior on tint {
            enabled: time.isLive

            ColorAnimation {
                duration: 200
                easing.type: Easing.OutQuad
            }
        }
    }

    Timeline {
        id: timeline

        period: 0.25
    }

    RunningTimerPresenter {
        id: presenter

        date: timeline.date
        fuseWidth: view.fuseWidth
        timer: view.timer
    }
}
