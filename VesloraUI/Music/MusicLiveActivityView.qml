// SPDX-License-Identifier: MIT
// Beside the notch: the cover of what plays, and bars that move while it does.
import QtQuick
import Veslora

WingsView {
    id: view

    required property MusicModel music

    innerPadding: 0
    outerPadding: 4

    leading: MusicCover {
        anchors.centerIn: parent
        isPlaying: presenter.isPlaying
        music: view.music
        radius: 4
        symbolSize: 12
        width: 18
    }
    trailing: Row {
        id: bars

        anchors.centerIn: parent
        height: 14
        spacing: 2

        Repeater {
            model: presenter.levels.length

            MusicBar {
                required property int index

                anchors.verticalCenter: parent.verticalCenter
                gap: bars.spacing
                level: presenter.heights[index]
            }
        }
    }

    Timeline {
        id: timeline

        period: 0.18
        // At rest nothing moves.
        visible: presenter.isPlaying
    }

    Timeline {
        id: steps

        period: 1 / 15
        visible: presenter.isMoving
    }

    MusicLevelsPresenter {
        id: presenter

        date: timeline.date
        music: view.music
        step: steps.date
    }
}
