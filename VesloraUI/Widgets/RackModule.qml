// SPDX-License-Identifier: MIT
// One place of the rack, and the widget that is in it.
import QtQuick
import Veslora

Item {
    id: module

    required property var entry
    required property IslandModels models

    width: entry.width

    Loader {
        anchors.fill: parent
        sourceComponent: views[module.entry.id] ?? title
    }

    // The view of each widget, by its id.
    QtObject {
        id: views

        property Component claude: ClaudeWidget {
            agents: module.models.agents
            isWide: module.entry.isWide
        }
        property Component claudeUsage: ClaudeUsageWidget {
            agents: module.models.agents
            isWide: module.entry.isWide
        }
        property Component clock: ClockView {}
        property Component keepAwake: KeepAwakeWidget {
            isWide: module.entry.isWide
            keepAwake: module.models.keepAwake
        }
        property Component meters: MetersWidget {
            isWide: module.entry.isWide
            sampler: module.models.sampler
        }
        property Component timer: TimerWidgetView {
            isWide: module.entry.isWide
            timer: module.models.timer
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
