// SPDX-License-Identifier: MIT
// The view of one widget, by its id; its title for one whose view has not landed.
import QtQuick
import Veslora

Loader {
    id: view

    required property string widget
    required property string title
    required property bool isWide
    required property IslandModels models

    sourceComponent: views[widget] ?? titleView

    QtObject {
        id: views

        property Component claude: ClaudeWidget {
            agents: view.models.agents
            isWide: view.isWide
        }
        property Component claudeUsage: ClaudeUsageWidget {
            agents: view.models.agents
            isWide: view.isWide
        }
        property Component clock: ClockView {}
        property Component keepAwake: KeepAwakeWidget {
            isWide: view.isWide
            keepAwake: view.models.keepAwake
        }
        property Component meters: MetersWidget {
            isWide: view.isWide
            sampler: view.models.sampler
        }
        property Component metronome: MetronomeWidget {
            isWide: view.isWide
            metronome: view.models.metronome
        }
        property Component music: MusicWidget {
            isWide: view.isWide
            music: view.models.music
        }
        property Component timer: TimerWidgetView {
            isWide: view.isWide
            timer: view.models.timer
        }
    }

    Component {
        id: titleView

        Item {
            VesloraLabel {
                text: view.title
            }
        }
    }
}
