// SPDX-License-Identifier: MIT
// The rack's clock: the date, and below it the time.
import QtQuick
import Veslora

Item {
    id: clock

    Timeline {
        id: timeline

        period: 60
    }

    ClockViewPresenter {
        id: presenter

        availableWidth: clock.width
        date: timeline.date
    }

    VesloraLabel {
        horizontalAlignment: Text.AlignHCenter
        text: presenter.dateText
        width: parent.width
        y: (parent.height - height - 6 - time.height) / 2
    }

    ClockTime {
        id: time

        anchors.horizontalCenter: parent.horizontalCenter
        height: 44
        pieces: presenter.pieces
        size: presenter.fontSize
        text: presenter.timeText
        y: (parent.height - height + 12 + 6) / 2
    }
}
