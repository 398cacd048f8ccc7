// SPDX-License-Identifier: MIT
// The page of widgets that the open island shows.
import QtQuick
import Veslora

Item {
    id: view

    required property RackModel rack
    required property AgentsModel agents
    required property SystemSampler sampler
    required property KeepAwakeModel keepAwake
    required property TimerModel timer

    RackPresenter {
        id: presenter

        availableWidth: view.width
        rack: view.rack
    }

    Row {
        anchors.centerIn: parent
        spacing: presenter.spacing

        Repeater {
            model: presenter.modules

            RackModule {
                agents: view.agents
                height: view.height
                keepAwake: view.keepAwake
                sampler: view.sampler
                timer: view.timer
            }
        }
    }

    VesloraLabel {
        anchors.centerIn: parent
        text: qsTr("No widgets · hold or right-click to edit")
        visible: presenter.isEmpty
    }
}
