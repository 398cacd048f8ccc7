// SPDX-License-Identifier: MIT
// One place of the rack, and the widget that stands in it.
import QtQuick
import Veslora

Item {
    id: module

    required property var entry
    required property AgentsModel agents
    required property SystemSampler sampler
    required property KeepAwakeModel keepAwake
    required property TimerModel timer

    width: entry.width

    Loader {
        anchors.fill: parent
        sourceComponent: module.entry.isAgents ? agentsWidget : module.entry.isUsage ? usageWidget : module.entry.isMeters ? metersWidget : module.entry.isClock ? clock : module.entry.isKeepAwake ? keepAwakeWidget : module.entry.isTimer ? timerWidget : title
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
        id: metersWidget

        MetersWidget {
            isWide: module.entry.isWide
            sampler: module.sampler
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
        id: keepAwakeWidget

        KeepAwakeWidget {
            isWide: module.entry.isWide
            keepAwake: module.keepAwake
        }
    }

    Component {
        id: clock

        ClockView {}
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
