// SPDX-License-Identifier: MIT
// The settings window: the one conventional window of the program.
import QtQuick
import QtQuick.Templates as T
import Veslora

Window {
    id: window

    required property AgentsModel agents
    /// Plays samples of the metronome's sounds, and is not the one that the user may have running.
    required property MetronomeModel metronomePreviewer
    /// An island of its own, for the looks of the accents.
    required property AccentPreview accentPreview
    required property LoginItemManager loginItem
    required property UpdaterModel updater
    required property string version
    /// Name of the page that shows.
    readonly property string page: pages[tabs.current].name
    /// Wider where a language's names of the tabs need it and the screen has the room.
    readonly property int pageWidth: Math.max(Math.round(460 * SettingsSizes.scale), Math.min(Screen.desktopAvailableWidth, Math.ceil(tabs.implicitWidth) + 16))

    property list<SettingsPage> pages: [
        SettingsPage {
            name: "general"
            symbol: "gearshape"
            title: qsTr("General")
            view: GeneralSettings {
                loginItem: window.loginItem
                updater: window.updater
                version: window.version
            }
        },
        SettingsPage {
            name: "island"
            symbol: "rectangle.topthird.inset.filled"
            title: qsTr("Island")
            view: IslandSettings {
                preview: window.accentPreview
            }
        },
        SettingsPage {
            name: "timer"
            symbol: "timer"
            title: qsTr("Timer")
            view: TimerSettings {}
        },
        SettingsPage {
            name: "music"
            symbol: "music.note"
            title: qsTr("Music")
            view: MusicSettings {}
        },
        SettingsPage {
            name: "metronome"
            symbol: "metronome"
            title: qsTr("Metronome")
            view: MetronomeSettings {
                previewer: window.metronomePreviewer
            }
        },
        SettingsPage {
            name: "agents"
            symbol: "sparkle"
            title: qsTr("Agents")
            view: ClaudeSettings {
                agents: window.agents
            }
        },
        SettingsPage {
            name: "keepAwake"
            symbol: "cup.and.saucer"
            title: qsTr("Keep Awake")
            view: KeepAwakeSettings {}
        }
    ]

    /// Goes to the page of that name, if there is one.
    function select(name: string) {
        tabs.select(name);
    }

    /// The window manager keeps to the bounds, so that they change first.
    function fit() {
        minimumWidth = pageWidth;
        maximumWidth = pageWidth;
        width = pageWidth;
    }

    // In a language that is written from the right the window is laid out from there.
    LayoutMirroring.childrenInherit: true
    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    color: SettingsColors.window
    // Tall enough that no page scrolls where the screen has the room. Of several screens the available height is that of
    // all together.
    height: Math.min(Screen.desktopAvailableHeight - 60, Screen.height - 60, 890 * SettingsSizes.scale)
    minimumHeight: 240
    title: qsTr("Veslora Settings")

    Component.onCompleted: fit()
    onPageWidthChanged: fit()

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }

    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        onActivated: tabs.step(1)
    }

    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]
        onActivated: tabs.step(-1)
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
        // No shortcut: an open list closes first.
        Keys.onEscapePressed: window.close()

        SettingsTabs {
            id: tabs

            anchors.horizontalCenter: parent.horizontalCenter
            pages: window.pages
            y: 8
        }

        Rectangle {
            id: line

            color: SettingsColors.line
            height: 1
            width: parent.width
            y: tabs.height + 16
        }

        Flickable {
            id: flickable

            T.ScrollBar.vertical: SettingsScrollBar {}
            anchors.bottom: parent.bottom
            anchors.top: line.bottom
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            contentHeight: page.height + 36
            width: parent.width

            Loader {
                id: page

                sourceComponent: window.pages[tabs.current].view
                width: parent.width - 40
                x: 20
                y: 18
                onLoaded: scroller.scrollToTop()
            }
        }
    }
}
