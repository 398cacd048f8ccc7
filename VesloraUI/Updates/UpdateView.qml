// SPDX-License-Identifier: MIT
// The window for updates: what there is, its notes, and the keys by which the user decides.
import QtQuick
import QtQuick.Templates as T
import Veslora

Window {
    id: window

    required property AppcastUpdater updater
    readonly property int margin: 20
    readonly property int wanted: Math.ceil(content.implicitHeight) + 2 * margin

    /// The window manager keeps to the bounds, so that they change first.
    function fit() {
        minimumWidth = 460 * SettingsSizes.scale;
        maximumWidth = minimumWidth;
        width = minimumWidth;
        minimumHeight = wanted;
        maximumHeight = wanted;
        height = wanted;
    }

    // In a language that is written from the right the window is laid out from there.
    LayoutMirroring.childrenInherit: true
    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    color: SettingsColors.window
    title: qsTr("Veslora Update")

    Component.onCompleted: fit()
    onWantedChanged: fit()

    UpdatePresenter {
        id: presenter

        updater: window.updater
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }

    Shortcut {
        sequence: "PgDown"
        onActivated: scroller.scroll(0.9)
    }

    Shortcut {
        sequence: "PgUp"
        onActivated: scroller.scroll(-0.9)
    }

    PageScroller {
        id: scroller

        view: flickable
    }

    // What has no focus of its own leaves it here, so that keys are always heard.
    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: window.close()

        Column {
            id: content

            spacing: 12
            width: parent.width - 2 * window.margin
            x: window.margin
            y: window.margin

            Column {
                spacing: 4
                width: parent.width

                SettingsText {
                    // Is spoken when it comes to show.
                    Accessible.role: Accessible.Notification
                    color: SettingsColors.text
                    text: presenter.headline
                    width: parent.width
                    wrapMode: Text.Wrap

                    font {
                        pixelSize: Math.round(SettingsSizes.title * 1.25)
                        weight: Font.DemiBold
                    }
                }

                SettingsText {
                    color: SettingsColors.secondary
                    text: presenter.detail
                    visible: text !== ""
                    width: parent.width
                    wrapMode: Text.Wrap

                    font {
                        pixelSize: SettingsSizes.control
                    }
                }
            }

            Rectangle {
                border.color: SettingsColors.groupBorder
                color: SettingsColors.group
                height: Math.min(flickable.contentHeight + 2, 260 * SettingsSizes.scale)
                radius: 8
                visible: notes.text !== ""
                width: parent.width

                Flickable {
                    id: flickable

                    T.ScrollBar.vertical: SettingsScrollBar {}
                    anchors.fill: parent
                    anchors.margins: 1
                    boundsBehavior: Flickable.StopAtBounds
                    clip: true
                    contentHeight: notes.height + 24

                    SettingsText {
                        id: notes

                        color: SettingsColors.text
                        text: presenter.notes
                        width: parent.width - 28
                        wrapMode: Text.Wrap
                        x: 14
                        y: 12

                        font {
                            pixelSize: SettingsSizes.control
                        }
                    }
                }
            }

            SettingsText {
                color: SettingsColors.text
                text: presenter.command
                visible: text !== ""
                width: parent.width
                wrapMode: Text.WrapAnywhere

                font {
                    family: VesloraStyle.monospacedFont
                    pixelSize: SettingsSizes.control
                }
            }

            Rectangle {
                Accessible.name: qsTr("%1 %").arg(Math.round(100 * presenter.progress))
                Accessible.role: Accessible.ProgressBar
                border.color: SettingsColors.trackBorder
                color: SettingsColors.track
                height: 6
                radius: 3
                visible: presenter.isDownloading
                width: parent.width

                Rectangle {
                    anchors.left: parent.left
                    color: SettingsColors.accentFill
                    height: parent.height
                    radius: 3
                    width: parent.width * presenter.progress
                }
            }

            Item {
                height: closing.height
                width: parent.width

                SettingsButton {
                    anchors.left: parent.left
                    text: qsTr("Skip This Version")
                    visible: presenter.isOffered
                    onClicked: presenter.skip()
                }

                Row {
                    anchors.right: parent.right
                    spacing: 8

                    SettingsButton {
                        text: qsTr("Copy Command")
                        visible: presenter.command !== ""
                        onClicked: presenter.copyCommand()
                    }

                    SettingsButton {
                        id: closing

                        text: presenter.closing
                        onClicked: presenter.close()
                    }

                    SettingsButton {
                        text: qsTr("Install Update")
                        visible: presenter.isOffered
                        onClicked: presenter.install()
                    }
                }
            }
        }
    }
}
