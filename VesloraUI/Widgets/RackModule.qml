// SPDX-License-Identifier: MIT
// One place of the rack, and the widget that stands in it.
import QtQuick
import Veslora

Item {
    id: module

    required property var entry
    required property AgentsModel agents
    required property TimerModel timer

    width: entry.width

    Loader {
        anchors.fill: parent
        sourceComponent: module.entry.isAgents ? agentsWidget : module.entry.isUsage ? usageWidget : module.entry.isTimer ? timerWidget : title
    }

    Component {
        id: agentsWidget

        ClaudeWidget {
            agents: module.agents
            isWide: module.entry.isWide
        }
    }

    Component {
        id: usageWidget

        ClaudeUsageWidget {
            agents: module.agents
            isWide: module.entry.isWide
        }
    }

    Component {
        id: timerWidget

        TimerWidgetView {
            isWide: module.entry.isWide
            timer: module.timer
        }
    }

    Component {
        id: title

        Item {
            VesloraLabel {
                text: module.entry.title
            }
        }
    }
}
