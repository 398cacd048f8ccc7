// SPDX-License-Identifier: MIT
// What plays, with its cover and the keys of its player.
import QtQuick
import Veslora

Item {
    id: widget

    required property MusicModel music
    required property bool isWide

    Timeline {
        id: timeline

        period: 0.5
    }

    MusicWidgetPresenter {
        id: presenter

        date: timeline.date
        music: widget.music
    }

    Loader {
        anchors.fill: parent
        sourceComponent: !presenter.hasTrack ? nothing : widget.isWide ? wide : small
    }

    Component {
        id: nothing

        Item {
            VesloraLabel {
                text: presenter.source
            }

            KeyButton {
                anchors.bottom: parent.bottom
                text: qsTr("Open Spotify")
                onClicked: widget.music.openSpotify()
            }
        }
    }

    Component {
        id: small

        Item {
            VesloraLabel {
                text: presenter.source
                width: parent.width
            }

            MusicCover {
                id: smallCover

                isPlaying: presenter.isPlaying
                music: widget.music
                radius: 7
                width: 56
                y: 20
            }

            MusicText {
                color: VesloraStyle.textPrimary
                height: 14
                text: presenter.title
                width: parent.width - x
                x: smallCover.width + 10
                y: smallCover.y + (smallCover.height - height) / 2

                font {
                    pixelSize: 12
                    weight: Font.DemiBold
                }
            }

            MusicKeys {
                anchors.bottom: parent.bottom
                isPlaying: presenter.isPlaying
                keyWidth: 46
                music: widget.music
            }
        }
    }

    Component {
        id: wide

        Item {
            MusicCover {
                id: cover

                isPlaying: presenter.isPlaying
                music: widget.music
                radius: 10
                width: 86
                y: (parent.height - height) / 2
            }

            Item {
                height: parent.height
                width: parent.width - x
                x: cover.width + 12

                VesloraLabel {
                    text: presenter.source
                    width: parent.width
                }

                MusicText {
                    color: VesloraStyle.textPrimary
                    height: 16
                    text: presenter.title
                    width: parent.width
                    y: 15

                    font {
                        pixelSize: 13
                        weight: Font.DemiBold
                    }
                }

                MusicText {
                    color: VesloraStyle.textSecondary
                    font.pixelSize: 10
                    height: 12
                    text: presenter.detail
                    width: parent.width
                    y: 31
                }

                SegmentedMeter {
                    fraction: presenter.progress
                    height: 5
                    segments: 16
                    width: parent.width
                    y: 52
                }

                MusicText {
                    color: VesloraStyle.textSecondary
                    height: 14
                    text: presenter.position
                    y: 60

                    font {
                        pixelSize: 11
                        weight: Font.Medium
                    }
                }

                MusicText {
                    anchors.right: parent.right
                    color: VesloraStyle.textSecondary
                    height: 14
                    text: presenter.duration
                    y: 60

                    font {
                        pixelSize: 11
                        weight: Font.Medium
                    }
                }

                MusicKeys {
                    anchors.bottom: parent.bottom
                    isPlaying: presenter.isPlaying
                    keyWidth: 40
                    music: widget.music
                }
            }
        }
    }
}
