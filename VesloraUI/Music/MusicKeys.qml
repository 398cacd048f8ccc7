// SPDX-License-Identifier: MIT
// The keys of the player that is shown.
import QtQuick
import Veslora

Row {
    id: keys

    required property MusicModel music
    required property bool isPlaying
    required property real keyWidth

    spacing: 6

    KeyButton {
        enabled: keys.music.canGoPrevious
        gap: keys.spacing
        helpText: qsTr("Previous")
        isDimmed: !enabled
        symbol: "backward.fill"
        symbolSize: 15
        text: qsTr("Previous")
        width: keys.keyWidth
        onClicked: keys.music.previous()
    }

    KeyButton {
        enabled: keys.music.canToggle
        gap: keys.spacing
        helpText: text
        isDimmed: !enabled
        symbol: keys.isPlaying ? "pause.fill" : "play.fill"
        text: keys.isPlaying ? qsTr("Pause") : qsTr("Play")
        width: keys.keyWidth
        onClicked: keys.music.togglePlayPause()
    }

    KeyButton {
        enabled: keys.music.canGoNext
        helpText: qsTr("Next")
        isDimmed: !enabled
        symbol: "forward.fill"
        symbolSize: 15
        text: qsTr("Next")
        width: keys.keyWidth
        onClicked: keys.music.next()
    }
}
