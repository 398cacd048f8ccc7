// SPDX-License-Identifier: MIT
// The cover of what plays, or a note where there is none. Paused it is dimmer.
import QtQuick
import Veslora

Item {
    id: cover

    required property MusicModel music
    required property bool isPlaying
    required property real radius
    property real symbolSize: width / 2
    /// Behind the note.
    property color color: VesloraStyle.keySurface

    height: width
    opacity: isPlaying ? 1 : 0.6

    PixelRectangle {
        anchors.fill: parent
        color: cover.color
        radius: cover.radius
        visible: !picture.hasPicture
    }

    Symbol {
        anchors.centerIn: parent
        color: VesloraStyle.textSecondary
        name: "music.note"
        size: cover.symbolSize
        visible: !picture.hasPicture
    }

    PixelPicture {
        id: picture

        anchors.fill: parent
        picture: cover.music.artwork
        radius: cover.radius
    }
}
