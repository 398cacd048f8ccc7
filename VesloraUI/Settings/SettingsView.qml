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
    required property string version

    property list<SettingsPage> pages: [
        SettingsPage {
            name: "general"
            symbol: "gearshape"
            title: qsTr("General")
            view: GeneralSettings {
                version: window.version
            }
        },
        SettingsPage {
            name: "island"
            symbol: "rectangle.topthird.inset.filled"
            title: qsTr("Island")
            view: IslandSettings {}
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

    color: SettingsColors.window
    // Tall enough that no page scrolls where the screen has the room. Of several screens the available height is that of
    // all together.
    height: Math.min(Screen.desktopAvailableHeight - 60, Screen.height - 60, 780)
    maximumWidth: width
    minimumHeight: 240
    minimumWidth: width
    title: qsTr("Veslora Settings")
    width: 460

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
            y: 66
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
