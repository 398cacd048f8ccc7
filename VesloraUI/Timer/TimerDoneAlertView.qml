// SPDX-License-Identifier: MIT
// What drops from the notch when a timer has finished: how long it ran, and whether it shall run once more.
import QtQuick
import Veslora

Item {
    id: view

    required property TimerModel timer

    // Is spoken when it comes to show.
    Accessible.name: qsTr("The timer is done. Restart or Dismiss.")
    Accessible.role: Accessible.Notification

    TimerDoneAlertPresenter {
        id: presenter

        timer: view.timer
    }

    Column {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        VesloraLabel {
            color: VesloraStyle.accentColor
            text: qsTr("DONE")
        }

        RollingTime {
            remaining: presenter.duration
            size: 24
        }
    }

    Fuse {
        anchors.verticalCenter: parent.verticalCenter
        height: 2
        opacity: presenter.isFuseLit ? 1 : 0.15
        width: keys.x - x - 12
        x: words.width + 12
    }

    Row {
        id: keys

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        KeyButton {
            text: qsTr("Restart")
            onClicked: view.timer.restart()
        }

        KeyButton {
            text: qsTr("Dismiss")
            onClicked: view.timer.dismissDone()
        }
    }
}
