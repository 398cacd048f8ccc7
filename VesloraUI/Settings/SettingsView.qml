// SPDX-License-Identifier: MIT
// The settings window: the one conventional window of the program.
import QtQuick
import Veslora

Window {
    id: window

    required property AgentsModel agents
    required property string version

    color: SettingsColors.window
    height: Math.min(Screen.desktopAvailableHeight - 60, 640)
    maximumWidth: width
    minimumHeight: 240
    minimumWidth: width
    title: qsTr("Veslora Settings")
    width: 460

    Row {
        id: tabs

        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 4
        y: 8

        SettingsTab {
            id: general

            checked: true
            symbol: "gearshape"
            text: qsTr("General")
        }

        SettingsTab {
            id: timerTab

            symbol: "timer"
            text: qsTr("Timer")
        }

        SettingsTab {
            id: agentsTab

            symbol: "sparkle"
            text: qsTr("Agents")
        }

        SettingsTab {
            id: keepAwakeTab

            symbol: "cup.and.saucer"
            text: qsTr("Keep Awake")
        }
    }

    Rectangle {
        id: line

        color: SettingsColors.line
        height: 1
        width: parent.width
        y: 66
    }

    Flickable {
        anchors.bottom: parent.bottom
        anchors.top: line.bottom
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentHeight: page.height + 36
        width: parent.width

        Loader {
            id: page

            sourceComponent: timerTab.checked ? timerPage : agentsTab.checked ? agentsPage : keepAwakeTab.checked ? keepAwakePage : generalPage
            width: parent.width - 40
            x: 20
            y: 18
        }
    }

    Component {
        id: generalPage

        GeneralSettings {
            version: window.version
        }
    }

    Component {
        id: timerPage

        TimerSettings {}
    }

    Component {
        id: agentsPage

        ClaudeSettings {
            agents: window.agents
        }
    }

    Component {
        id: keepAwakePage

        KeepAwakeSettings {}
    }
}
