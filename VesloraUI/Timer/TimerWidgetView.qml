// SPDX-License-Identifier: MIT
// The rack's timer: lengths to choose from, or the countdown.
import QtQuick
import Veslora

Item {
    id: widget

    required property TimerModel timer
    required property bool isWide

    Loader {
        anchors.fill: parent
        sourceComponent: widget.timer.isLiveActivityVisible ? running : picker
    }

    Component {
        id: running

        RunningTimerView {
            isWide: widget.isWide
            timer: widget.timer
        }
    }

    Component {
        id: picker

        TimerPickerView {
            isWide: widget.isWide
            timer: widget.timer
        }
    }
}
