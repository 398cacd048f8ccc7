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
        sourceComponent: views[module.entry.id] ?? title
    }

    // The view of each widget, by its id.
    QtObject {
        id: views

        property Component claude: ClaudeWidget {
            agents: module.agents
            isWide: module.entry.isWide
        }
        property Component claudeUsage: ClaudeUsageWidget {
            agents: module.agents
            isWide: module.entry.isWide
        }
        property Component clock: ClockView {}
        property Component keepAwake: KeepAwakeWidget {
            isWide: module.entry.isWide
            keepAwake: module.keepAwake
        }
        property Component meters: MetersWidget {
            isWide: module.entry.isWide
            sampler: module.sampler
        }
        property Component timer: TimerWidgetView {
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
