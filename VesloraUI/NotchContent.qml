// SPDX-License-Identifier: MIT
// What the island shows in each of its states; a change of the content's identity fades from one to the next.
import QtQuick
import Veslora

Fader {
    id: content

    required property NotchViewModel model

    component: {
        switch (model.content) {
        case NotchViewModel.ClaudeFinished:
            return finished;
        case NotchViewModel.ClaudeWorking:
            return working;
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
        id: finished

        ClaudeLiveActivityView {
            agents: content.model.agents
            notchHeight: content.model.notchHeight
            notchWidth: content.model.notchWidth
            wingWidth: content.model.wingWidth
        }
    }

    Component {
        id: working

        ClaudeWorkingActivityView {
            agents: content.model.agents
            notchHeight: content.model.notchHeight
            notchWidth: content.model.notchWidth
            wingWidth: content.model.wingWidth
        }
    }

    Component {
        id: request

        AlertFrame {
            model: content.model

            ClaudeRequestAlert {
                agents: content.model.agents
                anchors.fill: parent
                requestId: content.model.requestId
            }
        }
    }

    Component {
        id: notice

        AlertFrame {
            model: content.model

            ClaudeNotice {
                agents: content.model.agents
                anchors.fill: parent
            }
        }
    }

    Component {
        id: rack

        ContentFrame {
            model: content.model

            RackView {
                agents: content.model.agents
                height: 112
                rack: content.model.rack
                width: parent.width - 64
                x: 32
                y: content.model.notchHeight + 18
            }
        }
    }
}
