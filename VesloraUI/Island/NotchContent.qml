// SPDX-License-Identifier: MIT
// What the island shows in each of its states; a change of the content's identity fades from one to the next.
import QtQuick
import Veslora

Fader {
    id: island

    required property NotchViewModel model
    required property NotchOutline outline
    /// Points, at the moment; what shows is centred beneath the island's middle, and moves with its edges only where it
    /// has to.
    required property real islandWidth
    readonly property IslandModels models: model.models

    component: {
        switch (model.content) {
        case NotchViewModel.TimerRunning:
            return timer;
        case NotchViewModel.TimerDone:
            return timerDone;
        case NotchViewModel.ClaudeFinished:
            return finished;
        case NotchViewModel.ClaudeWorking:
            return working;
        case NotchViewModel.KeepAwake:
            return keepAwake;
        case NotchViewModel.Metronome:
            return metronome;
        case NotchViewModel.Music:
            return music;
        case NotchViewModel.ClaudeRequest:
            return request;
        case NotchViewModel.ClaudeNotice:
            return notice;
        case NotchViewModel.Rack:
            return rack;
        default:
            return null;
        }
    }
    identity: model.contentIdentity
    travel: model.isOpen ? 4 : 0

    Component {
        id: timer

        TimerLiveActivityView {
            notchHeight: island.model.notchHeight
            notchWidth: island.model.notchWidth
            timer: island.models.timer
            wingWidth: island.model.wingWidth
        }
    }

    Component {
        id: timerDone

        AlertFrame {
            model: island.model
            outline: island.outline

            TimerDoneAlertView {
                anchors.fill: parent
                timer: island.models.timer
            }
        }
    }

    Component {
        id: finished

        ClaudeLiveActivityView {
            agents: island.models.agents
            notchHeight: island.model.notchHeight
            notchWidth: island.model.notchWidth
            wingWidth: island.model.wingWidth
        }
    }

    Component {
        id: working

        ClaudeWorkingActivityView {
            agents: island.models.agents
            notchHeight: island.model.notchHeight
            notchWidth: island.model.notchWidth
            wingWidth: island.model.wingWidth
        }
    }

    Component {
        id: keepAwake

        KeepAwakeLiveActivityView {
            keepAwake: island.models.keepAwake
            notchHeight: island.model.notchHeight
            notchWidth: island.model.notchWidth
            wingWidth: island.model.wingWidth
        }
    }

    Component {
        id: metronome

        MetronomeLiveActivityView {
            metronome: island.models.metronome
            notchHeight: island.model.notchHeight
            notchWidth: island.model.notchWidth
            wingWidth: island.model.wingWidth
        }
    }

    Component {
        id: music

        MusicLiveActivityView {
            music: island.models.music
            notchHeight: island.model.notchHeight
            notchWidth: island.model.notchWidth
            wingWidth: island.model.wingWidth
        }
    }

    Component {
        id: request

        AlertFrame {
            id: requestFrame

            model: island.model
            outline: island.outline
            text: requestAlert.body

            ClaudeRequestAlert {
                id: requestAlert

                agents: island.models.agents
                anchors.fill: parent
                judge: requestFrame.judge
                requestId: island.model.subject
            }
        }
    }

    Component {
        id: notice

        AlertFrame {
            model: island.model
            outline: island.outline

            ClaudeNotice {
                agents: island.models.agents
                anchors.fill: parent
            }
        }
    }

    Component {
        id: rack

        ContentFrame {
            model: island.model

            RackView {
                height: island.model.rackHeight
                models: island.models
                room: island.islandWidth - 2 * x
                width: parent.width - 2 * x
                x: island.model.rackPadding
                y: island.model.rackTop
            }

            EditChrome {
                anchors.fill: parent
                notchHeight: island.model.notchHeight
                notchWidth: island.model.notchWidth
                rack: island.models.rack
                room: island.islandWidth - 2 * island.model.rackPadding
                trayTop: island.model.trayTop
            }
        }
    }
}
